-- expect source: {"a", "b", "c", "d"}
set AppleScript's text item delimiters to {",", ";", " "}
set r to text items of "a,b;c d"
set AppleScript's text item delimiters to ""
r
