-- expect source: {1, "a", 2, {3}}
on unique(l)
	set r to {}
	repeat with x in l
		if {contents of x} is not in r then set end of r to contents of x
	end repeat
	return r
end unique
unique({1, "a", 2, 1, "A", {3}, {3}})
