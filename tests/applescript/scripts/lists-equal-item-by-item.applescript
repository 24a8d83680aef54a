-- expect: true false
set AppleScript's text item delimiters to " "
return {{1, {"a"}} = {1, {"A"}}, {1, 2} = {2, 1}} as text
