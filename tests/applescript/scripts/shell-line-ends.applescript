-- expect: 3
set t to do shell script "lines"
set AppleScript's text item delimiters to return
return count of text items of t
