-- expect: 1
on f()
	return 1
end
return f()
