-- expect source: {1, 3, 5}
set r to {}
repeat with i from 1 to 6
	repeat 1 times
		if i mod 2 = 0 then exit repeat
		set end of r to i
	end repeat
end repeat
r
