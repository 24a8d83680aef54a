-- expect: text 5 1, 2 missing value true
set AppleScript's text item delimiters to ", "
set t to "text " & 5 & " " & {1, 2} & " " & missing value & " " & true
return t
