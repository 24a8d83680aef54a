-- expect: 4
script box
	property width : 4
end script
tell box
	return its width
end tell
