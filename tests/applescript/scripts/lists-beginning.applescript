-- expect: 0 1
set l to {1}
set beginning of l to 0
set AppleScript's text item delimiters to " "
return l as text
