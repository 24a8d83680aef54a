-- expect: 2
set text item delimiters to "|"
return count text items of "a|b"
