-- expect source: "ab12"
on f(a, b)
	a & b
end f
f(f("a", "b"), f(1 as text, {2} as text))
