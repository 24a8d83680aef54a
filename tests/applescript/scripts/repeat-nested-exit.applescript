-- expect: 6
set n to 0
repeat with i from 1 to 3
	repeat with j from 1 to 10
		if j > 2 then exit repeat
		set n to n + 1
	end repeat
end repeat
return n
