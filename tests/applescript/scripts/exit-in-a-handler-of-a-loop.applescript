-- expect error: -2755
on f()
	exit repeat
end f
repeat
	f()
end repeat
