-- expect source: {2, 4, 6}
set l to {1, 2, 3}
repeat with x in l
	set contents of x to x * 2
end repeat
l
