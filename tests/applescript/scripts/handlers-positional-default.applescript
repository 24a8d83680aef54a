-- expect: 3 12
on add(a, b : 2)
	return a + b
end add
return (add(1) as text) & " " & add(10, 2)
