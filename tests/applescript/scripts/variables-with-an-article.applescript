-- expect: 3
set the total to 0
repeat with the n in {1, 2}
	set the total to the total + the n
end repeat
the total
