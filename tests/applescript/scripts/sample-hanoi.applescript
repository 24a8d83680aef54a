-- expect source: 31
property moves : 0
on hanoi(n, a, b, c)
	if n is 0 then return
	hanoi(n - 1, a, c, b)
	set moves to moves + 1
	hanoi(n - 1, c, b, a)
end hanoi
hanoi(5, "A", "B", "C")
moves
