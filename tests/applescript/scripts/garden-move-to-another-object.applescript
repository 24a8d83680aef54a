-- expect: 2
tell application "Garden"
	move plant 1 of bed "Roses" to end of bed "Herbs"
	return count of plants of bed "Herbs"
end tell
