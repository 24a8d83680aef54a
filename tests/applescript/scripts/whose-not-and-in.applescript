-- expect: 2
-- expect events: coregetd
tell application "Garden"
	set found to every plant of bed 1 whose name is in {"Alba", "Gallica"} and not (height = 90)
	return count of found
end tell
