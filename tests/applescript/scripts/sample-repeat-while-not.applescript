-- expect source: 0
set i to 0
repeat while not (i ≥ 3)
	set i to i + 1
end repeat
repeat until i is 0
	set i to i - 1
end repeat
i
