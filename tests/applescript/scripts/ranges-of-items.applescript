-- expect: 2 3 4
set AppleScript's text item delimiters to " "
return (items 2 thru -1 of {1, 2, 3, 4}) as text
