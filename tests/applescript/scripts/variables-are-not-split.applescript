-- expect: 1
-- expect events: 
tell application "Garden"
	set heightPerWeek to 1
	return heightPerWeek
end tell
