-- expect source: {"{1} doesn’t match the parameters {a, b} for f.", -1721}
on f(a, b)
	a
end f
try
	f(1)
on error m number n
	{m, n}
end try
