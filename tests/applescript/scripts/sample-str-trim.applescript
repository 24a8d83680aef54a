-- expect source: {"hi there", "", ""}
on trimText(t)
	set whites to {space, tab, return, linefeed}
	repeat while length of t > 0 and first character of t is in whites
		if length of t is 1 then return ""
		set t to text 2 thru -1 of t
	end repeat
	repeat while length of t > 0 and last character of t is in whites
		set t to text 1 thru -2 of t
	end repeat
	return t
end trimText
{trimText("  hi there" & tab & linefeed), trimText("   "), trimText("")}
