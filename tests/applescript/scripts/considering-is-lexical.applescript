-- expect: true
on same(a, b)
	return a is b
end same
considering case
	return same("A", "a")
end considering
