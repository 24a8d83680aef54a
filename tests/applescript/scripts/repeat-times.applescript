-- expect: 3
set n to 0
repeat 3 times
	set n to n + 1
end repeat
return n
