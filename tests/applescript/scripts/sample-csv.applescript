-- expect source: {{fruit:"apple", qty:3}, {fruit:"pear", qty:5}}
set csv to "name,qty
apple,3
pear,5"
set AppleScript's text item delimiters to ","
set recs to {}
repeat with i from 2 to count paragraphs of csv
	set {n, q} to text items of paragraph i of csv
	set end of recs to {fruit:n, qty:q as integer}
end repeat
set AppleScript's text item delimiters to ""
recs
