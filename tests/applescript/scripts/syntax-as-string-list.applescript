-- expect source: "1, 2.5, x, true, 3, 4"
set AppleScript's text item delimiters to {", "}
set r to {1, 2.5, "x", true, {3, 4}} as string
set AppleScript's text item delimiters to {""}
r
