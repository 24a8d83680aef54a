-- expect: 95
-- expect events: coresetd coregetd
tell application "Garden"
	set height of plant 1 of bed 1 to 95
	return height of plant 1 of bed 1
end tell
