-- expect: 1;2
set AppleScript's text item delimiters to {";", ","}
return {1, 2} as text
