-- expect: a-b-c-
set s to ""
repeat with c in "abc"
	set s to s & c & "-"
end repeat
return s
