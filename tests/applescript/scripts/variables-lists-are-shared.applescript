-- expect: 1 2 3
set a to {1, 2}
set b to a
set end of b to 3
set AppleScript's text item delimiters to " "
return a as text
