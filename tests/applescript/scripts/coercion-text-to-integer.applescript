-- expect: 12 7 4
set AppleScript's text item delimiters to " "
{"12" as integer, "007" as integer, 3.7 as integer} as text
