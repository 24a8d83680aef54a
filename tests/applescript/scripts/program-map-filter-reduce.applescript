-- expect: 2,4,6,8,10 / 1,3,5 / 15
on mapped(f, l)
	set answer to {}
	script caller
		property operation : f
	end script
	repeat with x in l
		set end of answer to caller's operation(contents of x)
	end repeat
	return answer
end mapped
on filtered(f, l)
	script caller
		property operation : f
	end script
	set answer to {}
	repeat with x in l
		if caller's operation(contents of x) then set end of answer to contents of x
	end repeat
	return answer
end filtered
on reduced(f, start, l)
	script caller
		property operation : f
	end script
	repeat with x in l
		set start to caller's operation(start, contents of x)
	end repeat
	return start
end reduced
on double(n)
	return n * 2
end double
on isOdd(n)
	return n mod 2 = 1
end isOdd
on add(a, b)
	return a + b
end add
set l to {1, 2, 3, 4, 5}
set AppleScript's text item delimiters to ","
return (mapped(double, l) as text) & " / " & filtered(isOdd, l) & " / " & reduced(add, 0, l)
