-- expect source: {{"a", "b", "", "c"}, "1 + 2 + 3", "The cog sog"}
on splitText(theText, theDelimiter)
	set oldTID to AppleScript's text item delimiters
	try
		set AppleScript's text item delimiters to theDelimiter
		set theItems to every text item of theText
		set AppleScript's text item delimiters to oldTID
		return theItems
	on error errMsg number errNum
		set AppleScript's text item delimiters to oldTID
		error errMsg number errNum
	end try
end splitText
on joinList(theList, theDelimiter)
	set {oldTID, AppleScript's text item delimiters} to {AppleScript's text item delimiters, theDelimiter}
	set theText to theList as string
	set AppleScript's text item delimiters to oldTID
	return theText
end joinList
on replaceText(t, findText, newText)
	return joinList(splitText(t, findText), newText)
end replaceText
{splitText("a/b//c", "/"), joinList({1, 2, 3}, " + "), replaceText("The cat sat", "AT", "og")}
