-- expect: 4
on f(x)
	return x + 1
end f
return f(3) of me
