-- expect source: "found23"
set l to {"x", "y"}
set r to ""
repeat with a in l
	if a as text is "x" then set r to r & "found"
	if (a as string) = "y" then set r to r & "2"
	if contents of a = "y" then set r to r & "3"
end repeat
r
