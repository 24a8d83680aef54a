-- expect: 91,151,81
tell application "Garden"
	repeat with p in (get every plant of bed 1)
		set height of p to (height of p) + 1
	end repeat
	set all to height of every plant of bed 1
end tell
set AppleScript's text item delimiters to ","
return all as text
