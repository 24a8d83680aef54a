-- expect: a b
set {saved, AppleScript's text item delimiters} to {AppleScript's text item delimiters, "-"}
set parts to text items of "a-b"
set AppleScript's text item delimiters to saved
return item 1 of parts & " " & item 2 of parts
