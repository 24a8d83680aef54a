-- expect: Damask,Alba,Gallica
-- expect events: coregetd coregetd coregetd coregetd
tell application "Garden"
	set all to every plant of bed 1
	set n to ""
	repeat with p in all
		if n is "" then
			set n to name of p
		else
			set n to n & "," & name of p
		end if
	end repeat
	return n
end tell
