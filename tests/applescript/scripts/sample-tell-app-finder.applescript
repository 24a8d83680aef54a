-- expect error: -1728
-- expect message: Can’t get application "Finder".
tell application "Finder"
	get name of startup disk
end tell
