-- expect error: -2753
-- expect message: The variable x is not defined.
on f()
	return
end f
set x to 1
set x to f()
return x
