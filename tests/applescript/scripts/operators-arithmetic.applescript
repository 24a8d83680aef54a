-- expect: 7|2.5|2|1|8.0|-3|-7|3.0|1.0E+9
set AppleScript's text item delimiters to "|"
{1 + 2 * 3, 5 / 2, 7 div 3, 7 mod 3, 2 ^ 3, -3, -(3 + 4), 1.5 * 2, 500000000 + 500000000} as text
