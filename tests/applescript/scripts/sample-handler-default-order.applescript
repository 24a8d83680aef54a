-- expect source: 4
on f given x:a, y:b
	a - b
end f
(f given y:1, x:5)
