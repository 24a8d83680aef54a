-- expect source: 3
on f()
	local a, b
	set {a, b} to {1, 2}
	a + b
end f
f()
