-- expect: 1 2 3 4
set AppleScript's text item delimiters to {", ", "x"}
set parts to text items of "1, 2X3x4"
set AppleScript's text item delimiters to " "
return parts as text
