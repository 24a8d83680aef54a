-- expect: Alba
-- expect events: coregetd
tell application "Garden"
	return name of first plant of bed 1 whose (ripe is true and height > 100) or name starts with "X"
end tell
