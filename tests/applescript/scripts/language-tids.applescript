-- expect source: {{"a", "b", "c"}, "a-b-c", {""}, "b", 3}
set saved to AppleScript's text item delimiters
set AppleScript's text item delimiters to ", "
set l to text items of "a, b, c"
set AppleScript's text item delimiters to "-"
set t to l as text
set AppleScript's text item delimiters to saved
{l, t, saved, text item 2 of "abc", count text items of "abc"}
