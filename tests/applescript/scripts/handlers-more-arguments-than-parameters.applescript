-- expect: 1
on f(x)
	return x
end f
f(1, 2)
