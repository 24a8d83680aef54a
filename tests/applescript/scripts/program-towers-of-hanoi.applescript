-- expect: 31 A-C
property moves : {}
on hanoi(n, a, b, c)
	if n = 0 then return
	hanoi(n - 1, a, c, b)
	set end of moves to a & "-" & c
	hanoi(n - 1, b, a, c)
end hanoi
hanoi(5, "A", "B", "C")
return (count moves) & " " & last item of moves as text
