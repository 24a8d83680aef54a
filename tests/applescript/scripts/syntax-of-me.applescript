-- expect source: {5, 6, 4, 4}
property p : 4
on f(x)
	return x + p
end f
{f(1) of me, my f(2), p of me, my p}
