-- expect source: 2
on run {}
	set x to 1
	return helper(x)
end run
on helper(n)
	return n + 1
end helper
