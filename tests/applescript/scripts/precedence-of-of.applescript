-- expect: b/c
set AppleScript's text item delimiters to "/"
set parts to {"a", "b", "c"}
return items 2 thru -1 of parts as text
