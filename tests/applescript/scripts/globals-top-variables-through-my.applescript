-- expect: 6
on f()
	return my x + 1
end f
set x to 5
return f()
