-- expect source: {1, 2, 3, "four", 5}
on flatten(l)
	if class of l is not list then return {l}
	set r to {}
	repeat with x in l
		set r to r & flatten(contents of x)
	end repeat
	return r
end flatten
flatten({1, {2, {3, {}}, "four"}, 5})
