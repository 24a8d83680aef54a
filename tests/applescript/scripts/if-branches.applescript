-- expect: c
set x to 3
if x = 1 then
	return "a"
else if x = 2 then
	return "b"
else if x = 3 then
	return "c"
else
	return "d"
end if
