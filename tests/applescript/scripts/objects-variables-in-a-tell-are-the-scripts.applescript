-- expect: 1
script box
	property width : 4
end script
set width to 1
tell box
	return width
end tell
