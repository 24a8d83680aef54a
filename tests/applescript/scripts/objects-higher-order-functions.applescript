-- expect: 2 4 6
on mReturn(f)
	if class of f is script then return f
	script
		property call_ : f
	end script
end mReturn
on map(f, xs)
	set mapped to {}
	tell mReturn(f)
		repeat with i from 1 to length of xs
			set end of mapped to call_(item i of xs)
		end repeat
	end tell
	return mapped
end map
on double(x)
	return x * 2
end double
set AppleScript's text item delimiters to " "
return map(double, {1, 2, 3}) as text
