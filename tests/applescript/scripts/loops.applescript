-- expect: 3 10 5 9 4
set a to 0
repeat 3 times
	set a to a + 1
end repeat
set b to 0
repeat with i from 1 to 4
	set b to b + i
end repeat
set c to 0
repeat while c < 5
	set c to c + 1
end repeat
set d to 0
repeat with i from 5 to 1 by -2
	set d to d + i
end repeat
set e to 0
repeat until e is 4
	set e to e + 1
end repeat
return "" & a & " " & b & " " & c & " " & d & " " & e
