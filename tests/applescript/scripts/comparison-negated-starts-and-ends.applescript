-- expect: true false true
set AppleScript's text item delimiters to " "
return {"abc" does not start with "b", "abc" doesn't begin with "a", {1, 2} does not end with 1} as text
