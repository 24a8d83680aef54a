-- expect: Gallica,Damask,Alba
tell application "Garden"
	move plant "Gallica" of bed 1 to beginning of bed 1
	set all to name of every plant of bed 1
end tell
set AppleScript's text item delimiters to ","
return all as text
