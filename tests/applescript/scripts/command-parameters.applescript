-- expect: watered 2 with 3.000000 gently
-- expect events: coregetd GardWatr
tell application "Garden"
	set p to every plant of bed 1 whose ripe is true
	water p amount 3 with gently
end tell
