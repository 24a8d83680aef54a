-- expect: false false
set AppleScript's text item delimiters to " "
return {"5" is 5, {"a"} is "a"} as text
