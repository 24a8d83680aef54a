-- expect error: -2753
on f()
	return
end f
set x to f()
return x
