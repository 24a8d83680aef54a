-- expect: 1 2 3 3 2
set l to {1, 2, 3}
set x to {first item of l, second item of l, third item of l, last item of l, middle item of l}
set AppleScript's text item delimiters to " "
return x as text
