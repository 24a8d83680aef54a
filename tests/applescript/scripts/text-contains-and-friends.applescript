-- expect: true true true true false
set AppleScript's text item delimiters to " "
return {"abc" contains "B", "abc" starts with "a", "abc" ends with "C", "b" is in "abc", "abc" does not contain "b"} as text
