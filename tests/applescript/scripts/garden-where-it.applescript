-- expect: 2
tell application "Garden"
	return count of (every plant of bed 1 where its ripe is true)
end tell
