-- expect: 5 3
set n to 0
repeat while n < 5
	set n to n + 1
end repeat
set m to 0
repeat until m = 3
	set m to m + 1
end repeat
return (n as text) & " " & m
