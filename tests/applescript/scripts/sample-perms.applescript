-- expect source: {{1, 2, 3}, {1, 3, 2}, {2, 1, 3}, {2, 3, 1}, {3, 1, 2}, {3, 2, 1}}
on permutations(l)
	if length of l ≤ 1 then return {l}
	set r to {}
	repeat with i from 1 to length of l
		set others to {}
		repeat with j from 1 to length of l
			if j ≠ i then set end of others to item j of l
		end repeat
		repeat with p in permutations(others)
			set end of r to {item i of l} & p
		end repeat
	end repeat
	return r
end permutations
permutations({1, 2, 3})
