-- expect: true true false
set AppleScript's text item delimiters to " "
return {"apple" < "Banana", "b" comes after "A", "a" ≥ "b"} as text
