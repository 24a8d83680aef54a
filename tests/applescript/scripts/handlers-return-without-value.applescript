-- expect none
on f()
	return
end f
f()
