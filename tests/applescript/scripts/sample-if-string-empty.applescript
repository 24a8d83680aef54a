-- expect source: "empty!?"
set s to ""
if s is "" then
	set r to "empty"
else
	set r to s
end if
if s = "" then set r to r & "!"
if length of s is 0 then set r to r & "?"
r
