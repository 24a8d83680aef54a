-- expect source: {{1, "a"}, {2, "b"}}
on zip(a, b)
	script
		on |λ|(i)
			return {item i of a, item i of b}
		end |λ|
	end script
	set f to result
	set r to {}
	repeat with i from 1 to length of a
		set end of r to f's |λ|(i)
	end repeat
	r
end zip
zip({1, 2}, {"a", "b"})
