-- expect: 2
set AppleScript's text item delimiters to return
return count of text items of ("a" & return & "b")
