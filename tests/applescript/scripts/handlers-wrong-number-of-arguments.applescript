-- expect error: -1721
-- expect message: {1, 2} doesn’t match the parameters {x} for f.
on f(x)
	return x
end f
f(1, 2)
