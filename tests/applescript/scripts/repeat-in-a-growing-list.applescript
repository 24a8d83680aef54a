-- expect: 6
set l to {1, 2, 3}
repeat with x in l
	if length of l < 6 then set end of l to 0
end repeat
return length of l
