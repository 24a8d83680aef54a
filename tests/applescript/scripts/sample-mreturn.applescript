-- expect source: {1, 4, 9}
on mReturn(f)
	if script is class of f then
		f
	else
		script
			property |λ| : f
		end script
	end if
end mReturn
on map(f, xs)
	tell mReturn(f)
		set lng to length of xs
		set lst to {}
		repeat with i from 1 to lng
			set end of lst to |λ|(item i of xs, i, xs)
		end repeat
		return lst
	end tell
end map
on square(x)
	x * x
end square
map(square, {1, 2, 3})
