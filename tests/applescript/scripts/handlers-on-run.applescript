-- expect: 2
property p : 1
on run
	set p to p + 1
	return p
end run
