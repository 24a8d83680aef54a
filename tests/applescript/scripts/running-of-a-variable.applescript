-- expect: true
-- expect events: 
set a to application "Garden"
tell a
	return a is running
end tell
