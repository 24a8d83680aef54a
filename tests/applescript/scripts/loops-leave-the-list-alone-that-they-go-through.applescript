-- expect: 3
set l to {1, 2, 3}
repeat with x in l
	set l to l & 0
	if (count l) > 5 then exit repeat
end repeat
return contents of x
