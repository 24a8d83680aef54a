-- expect source: {"a", "b"}
set text item delimiters to "-"
set r to text items of "a-b"
set text item delimiters to ""
r
