-- expect none
repeat
	1
	exit repeat
end repeat
