-- expect source: "1.414213562373"
on sqrt(x)
	set g to x / 2
	repeat 30 times
		set g to (g + x / g) / 2
	end repeat
	g
end sqrt
sqrt(2) as text
