-- expect source: 3
on f()
	return {a:1, b:2}
end f
set {a:x, b:y} to f()
x + y
