-- expect: 2
-- expect events: 
tell application "Garden"
	set parts to {1, 2}
	return count of parts
end tell
