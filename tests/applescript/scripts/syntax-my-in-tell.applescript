-- expect source: 5
on f()
	return 5
end f
tell "x"
	set r to my f()
end tell
r
