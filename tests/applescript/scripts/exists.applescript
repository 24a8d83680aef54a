-- expect: true false true
-- expect events: coredoex coredoex coredoex
tell application "Garden"
	set a to exists bed "Roses"
	set b to bed "Weeds" exists
	set c to bed "Weeds" does not exist
	return "" & a & " " & b & " " & c
end tell
