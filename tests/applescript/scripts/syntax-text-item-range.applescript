-- expect source: {"a.b.c", "txt", {"b", "c"}, "a.b.c"}
set AppleScript's text item delimiters to "."
set f to "a.b.c.txt"
set r to {text 1 thru text item -2 of f, text item -1 of f, text items 2 thru 3 of f, (text items 1 thru -2 of f) as text}
set AppleScript's text item delimiters to ""
r
