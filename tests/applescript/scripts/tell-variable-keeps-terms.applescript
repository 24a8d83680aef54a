-- expect: 90
-- expect events: coregetd coregetd
tell application "Garden"
	set p to plant 1 of bed 1
	tell p to return height
end tell
