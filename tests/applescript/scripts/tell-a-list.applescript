-- expect: 2
tell {1, 2, 3}
	return item 2 of it
end tell
