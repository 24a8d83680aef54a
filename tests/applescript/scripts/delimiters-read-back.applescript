-- expect: :
set AppleScript's text item delimiters to ":"
return AppleScript's text item delimiters
