-- expect: 12, rounded
on findNumber of x above limit given rounding:r
	if r then return (x + limit as text) & ", rounded"
	return x + limit
end findNumber
return findNumber of 10 above 2 given rounding:true
