-- expect: 1 1 1 1
set a to {1}
set a to a & a
set a to a & a
set AppleScript's text item delimiters to " "
return a as text
