-- expect: 1 x 3
set L to {1, 2, 3}
set item 2 of L to "x"
set AppleScript's text item delimiters to " "
return L as text
