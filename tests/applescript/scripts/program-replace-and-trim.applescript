-- expect: [the cat sat on the cat]
on replaceText(find, replacement, subject)
	set saved to AppleScript's text item delimiters
	set AppleScript's text item delimiters to find
	set parts to text items of subject
	set AppleScript's text item delimiters to replacement
	set subject to parts as text
	set AppleScript's text item delimiters to saved
	return subject
end replaceText
on trim(someText)
	repeat until someText does not start with " "
		set someText to text 2 thru -1 of someText
	end repeat
	repeat until someText does not end with " "
		set someText to text 1 thru -2 of someText
	end repeat
	return someText
end trim
return "[" & trim(replaceText("dog", "cat", "  the dog sat on the dog   ")) & "]"
