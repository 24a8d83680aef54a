-- expect error: -2741
on f()
	return 1
end g
