-- expect: Garden got an error: Can’t get bed 7. Invalid index.
tell application "Garden"
	try
		get bed 7
	on error m
		return m
	end try
end tell
