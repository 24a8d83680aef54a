-- expect source: {2, 3}
set r to {}
repeat with x in items 2 thru 3 of {1, 2, 3, 4}
	set end of r to x as integer
end repeat
r
