-- expect: 2
tell application "Garden"
	make new plant at end of bed "Herbs"
	count plants of bed "Herbs"
end tell
