-- expect source: {{"", "b", "bold", "/b", ""}, {"c"}, {"a", "b"}, {"a", "b"}, {1}, {1}}
set AppleScript's text item delimiters to {"<", ">"}
set r to every text item of "<b>bold</b>"
set AppleScript's text item delimiters to ""
{r, text items 3 thru -2 of "abcd", every character of "ab", every word of "a b", every item of {1}, every integer of {1, "a"}}
