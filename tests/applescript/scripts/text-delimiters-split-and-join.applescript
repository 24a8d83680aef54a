-- expect: a/b/c
set AppleScript's text item delimiters to ","
set parts to text items of "a,b,c"
set AppleScript's text item delimiters to "/"
return parts as text
