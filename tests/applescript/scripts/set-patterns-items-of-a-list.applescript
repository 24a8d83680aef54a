-- expect: 2 1
set l to {1, 2}
set {item 1 of l, item 2 of l} to {item 2 of l, item 1 of l}
set AppleScript's text item delimiters to " "
return l as text
