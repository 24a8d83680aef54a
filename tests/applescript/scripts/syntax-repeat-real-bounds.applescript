-- expect source: {1, 2}
set r to {}
repeat with i from 1 to 2.0
	set end of r to i
end repeat
r
