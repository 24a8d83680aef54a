-- expect: 2
-- expect events: coregetd
tell application "Garden"
	return count of (get plants 2 thru 3 of bed 1)
end tell
