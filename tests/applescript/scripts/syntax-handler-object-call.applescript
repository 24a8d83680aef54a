-- expect error: -2741
script Lib
	on add(a, b)
		a + b
	end add
	on sub:a from:b
		b - a
	end sub:from:
end script
{Lib's add(1, 2), tell Lib to add(3, 4), Lib's sub:1 |from|:5}
