-- expect source: {2, 4, 6}
on map(f, l)
	script mapper
		property fn : f
	end script
	set r to {}
	repeat with x in l
		set end of r to mapper's fn(contents of x)
	end repeat
	r
end map
on double(x)
	x * 2
end double
map(double, {1, 2, 3})
