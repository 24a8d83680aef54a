-- expect: true false
set AppleScript's text item delimiters to " "
return {{1, 2, 3} contains {2, 3}, {1, 2, 3} contains {1, 3}} as text
