-- expect error: -1708
-- expect message: Garden got an error: Can’t continue f.
on f()
	return 1
end f
tell application "Garden" to f()
