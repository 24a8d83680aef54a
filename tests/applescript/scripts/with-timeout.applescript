-- expect: Garden
tell application "Garden"
	with timeout of 5 seconds
		return name
	end timeout
end tell
