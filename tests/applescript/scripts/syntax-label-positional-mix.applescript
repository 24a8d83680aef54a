-- expect source: "1-2"
on joinWith:sep items:l
	set AppleScript's text item delimiters to sep
	set t to l as text
	set AppleScript's text item delimiters to ""
	return t
end joinWith:items:
my joinWith:"-" items:{1, 2}
