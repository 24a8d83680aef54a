-- expect error: -1721
-- expect message: {1} doesn’t match the parameters {x, y} for f.
on f(x, y)
	return x
end f
f(1)
