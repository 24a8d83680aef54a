-- expect: true false
set AppleScript's text item delimiters to " "
return {{a:1, b:2} contains {b:2}, {a:1} contains {a:2}} as text
