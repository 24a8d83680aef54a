-- expect: 5
on f()
	global x
	return x
end f
set x to 5
return f()
