-- expect source: 6
set the myList to the {1, 2, 3}
set the total to 0
repeat with the n in the myList
	set the total to the total + the n
end repeat
the total
