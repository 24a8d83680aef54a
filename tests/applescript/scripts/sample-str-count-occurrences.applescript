-- expect source: {2, 0}
on countOf(needle, hay)
	set AppleScript's text item delimiters to needle
	set n to (count of text items of hay) - 1
	set AppleScript's text item delimiters to {""}
	n
end countOf
{countOf("an", "banana"), countOf("x", "banana")}
