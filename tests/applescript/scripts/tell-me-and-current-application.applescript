-- expect: 3
on f()
	return 1
end f
tell me
	set a to f()
end tell
tell current application
	set b to my f()
end tell
tell AppleScript
	set c to my f()
end tell
return a + b + c
