-- expect none
repeat with x in {}
	x
end repeat
