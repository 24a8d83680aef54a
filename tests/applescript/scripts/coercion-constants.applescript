-- expect: true missing value text 0.5 1.0E+4 3.14159265359
set AppleScript's text item delimiters to " "
{true, missing value, text, 0.5, 10000.0, pi} as text
