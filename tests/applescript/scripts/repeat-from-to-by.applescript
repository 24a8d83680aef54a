-- expect: 10 7 4 1
set l to {}
repeat with i from 10 to 1 by -3
	set end of l to i
end repeat
set AppleScript's text item delimiters to " "
return l as text
