-- expect: Damask Gallica Alba Alba Gallica
-- expect events: coregetd coregetd corecnte coregetd coregetd coregetd
tell application "Garden"
	set b to "Roses"
	set r to name of plant 1 of bed b
	set r to r & " " & name of plant -1 of bed named b
	set r to r & " " & name of middle plant of bed index 1
	set r to r & " " & name of second plant of bed 1
	set r to r & " " & (name of plants 3 thru 3 of bed 1) as text
	return r
end tell
