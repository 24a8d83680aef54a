-- expect: 2 3 1 2
-- expect events: corecnte corecnte coregetd coregetd
tell application "Garden"
	set a to count of beds
	set b to count plants of bed 1
	set c to count of (every plant of bed 2 whose ripe is true)
	set d to count of (every plant of bed 1 whose height < 100)
	return "" & a & " " & b & " " & c & " " & d
end tell
