-- expect source: 3
set x to 1


set y to 2
	x + y
