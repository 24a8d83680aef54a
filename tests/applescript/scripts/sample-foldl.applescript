-- expect source: 10
on foldl(f, startValue, xs)
	tell mReturn(f)
		set v to startValue
		repeat with i from 1 to length of xs
			set v to |λ|(v, item i of xs, i, xs)
		end repeat
		return v
	end tell
end foldl
on mReturn(f)
	if class of f is script then return f
	script
		property |λ| : f
	end script
end mReturn
script add
	on |λ|(a, b)
		a + b
	end |λ|
end script
foldl(add, 0, {1, 2, 3, 4})
