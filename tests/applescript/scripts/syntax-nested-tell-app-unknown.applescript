-- expect error: -1728
tell application "No Such App Anywhere"
	activate
end tell
