-- expect source: {{"/Users/me", "pic.one", "jpg"}, {"/a", "README", ""}}
on nameParts(p)
	set AppleScript's text item delimiters to "/"
	set fileName to last text item of p
	set folder_ to (text items 1 thru -2 of p) as text
	set AppleScript's text item delimiters to "."
	if fileName contains "." then
		set ext to last text item of fileName
		set base to text 1 thru text item -2 of fileName
	else
		set ext to ""
		set base to fileName
	end if
	set AppleScript's text item delimiters to ""
	{folder_, base, ext}
end nameParts
{nameParts("/Users/me/pic.one.jpg"), nameParts("/a/README")}
