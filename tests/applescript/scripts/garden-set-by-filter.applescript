-- expect: 1 1 1
tell application "Garden"
	set height of every plant of bed 1 to 1
	set all to height of every plant of bed 1
end tell
set AppleScript's text item delimiters to " "
return all as text
