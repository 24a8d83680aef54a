-- expect: 1
on f()
	return 1
end f
tell application "Garden" to return my f()
