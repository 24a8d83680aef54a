-- expect source: 102334155
property memo : {1, 1}
on fib(n)
	if n ≤ (count memo) then return item n of memo
	set f to fib(n - 1) + fib(n - 2)
	set end of memo to f
	return f
end fib
fib(40)
