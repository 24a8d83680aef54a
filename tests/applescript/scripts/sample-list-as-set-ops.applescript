-- expect source: {2, 3}
on intersect(a, b)
	set r to {}
	repeat with x in a
		if b contains x then set end of r to x's contents
	end repeat
	r
end intersect
intersect({1, 2, 3}, {2, 3, 4})
