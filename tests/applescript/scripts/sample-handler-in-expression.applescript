-- expect source: {8, {2, 2}, 8}
on two()
	2
end two
set x to two() * 3 + two()
set l to {two(), two()}
{x, l, item (two()) of {7, 8}}
