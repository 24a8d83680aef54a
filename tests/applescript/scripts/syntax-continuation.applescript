-- expect source: {6, {1, 2}}
set x to 1 + ¬
	2 + ¬
	3
set l to {1, ¬
	2}
{x, l}
