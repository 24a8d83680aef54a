-- expect: 2 4
set L to {1, 2}
repeat with x in L
	set contents of x to x * 2
end repeat
set AppleScript's text item delimiters to " "
return L as text
