-- expect: 0
on run argv
	return count of argv
end run
