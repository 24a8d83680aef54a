-- expect: Damask, Alba, Gallica
-- expect events: coregetd
tell application "Garden"
	set n to name of every plant of bed "Roses"
end tell
set AppleScript's text item delimiters to ", "
return n as text
