-- expect error: -2706
on f(n)
	return f(n + 1)
end f
f(1)
