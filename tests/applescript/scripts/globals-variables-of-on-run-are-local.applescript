-- expect error: -2753
on f()
	global x
	return x
end f
on run
	set x to 5
	return f()
end run
