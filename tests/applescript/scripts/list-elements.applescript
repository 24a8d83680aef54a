-- expect: 1 5 3 4 2,3 5,4
set L to {1, 2, 3, 4, 5}
set r to {first item of L, last item of L, middle item of L, item -2 of L, items 2 thru 3 of L, reverse of (items 4 thru 5 of L)}
set AppleScript's text item delimiters to ","
set line to ""
repeat with x in r
	set line to line & (x as text) & " "
end repeat
return text 1 thru -2 of line
