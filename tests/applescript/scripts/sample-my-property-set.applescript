-- expect source: 3
property n : 0
on inc()
	set my n to (my n) + 1
end inc
repeat 3 times
	inc()
end repeat
n
