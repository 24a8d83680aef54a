-- expect: 5
on makePoint(x, y)
	script thePoint
		property px : x
		property py : y
	end script
	return thePoint
end makePoint
set p to makePoint(2, 3)
return (px of p) + (p's py)
