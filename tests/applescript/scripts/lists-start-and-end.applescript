-- expect: true true
set AppleScript's text item delimiters to " "
return {{1, 2, 3} starts with {1, 2}, {1, 2, 3} ends with 3} as text
