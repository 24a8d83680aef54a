-- expect source: "desserts"
on reverseText(t)
	return (reverse of (characters of t)) as text
end reverseText
set AppleScript's text item delimiters to ""
reverseText("stressed")
