-- expect: 1 2 1
set a to {}
set a to a & 1
set b to a
set a to a & 2
set AppleScript's text item delimiters to " "
return (a as text) & " " & b
