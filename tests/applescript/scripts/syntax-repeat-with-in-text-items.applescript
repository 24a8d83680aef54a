-- expect source: {"a!", "b!"}
set AppleScript's text item delimiters to ","
set r to {}
repeat with t in text items of "a,b"
	set end of r to (t as text) & "!"
end repeat
set AppleScript's text item delimiters to ""
r
