-- expect: a-b-c
set old to AppleScript's text item delimiters
set AppleScript's text item delimiters to "_"
set parts to text items of "a_b_c"
set AppleScript's text item delimiters to "-"
set joined to parts as text
set AppleScript's text item delimiters to old
return joined
