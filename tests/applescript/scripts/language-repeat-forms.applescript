-- expect source: {{"t", "t", 1, 3, 5, "x", "y"}, 2}
set r to {}
repeat 2 times
	set end of r to "t"
end repeat
repeat with i from 1 to 5 by 2
	set end of r to i
end repeat
set n to 3
repeat while n > 0
	set n to n - 1
end repeat
repeat until n = 2
	set n to n + 1
end repeat
repeat
	exit repeat
end repeat
repeat with w in {"x", "y"}
	set end of r to contents of w
end repeat
{r, n}
