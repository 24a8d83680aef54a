-- expect: 2
set n to 0
repeat with i from 1 to 2
	repeat
		exit repeat
	end repeat
	set n to n + 1
end repeat
return n
