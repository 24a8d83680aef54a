-- expect source: {6, {{1, 2, 3}, {2, 0, 6}, {3, 6, 9}}, 3}
set m to {}
repeat with i from 1 to 3
	set row to {}
	repeat with j from 1 to 3
		set end of row to i * j
	end repeat
	set end of m to row
end repeat
set item 2 of item 2 of m to 0
{item 3 of item 2 of m, m, item 1 of (item 3 of m)}
