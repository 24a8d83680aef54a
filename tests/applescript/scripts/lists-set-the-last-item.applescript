-- expect: 1 9
set l to {1, 2}
set last item of l to 9
set AppleScript's text item delimiters to " "
return l as text
