-- expect error: -2753
on f()
	return x
end f
set x to 1
f()
