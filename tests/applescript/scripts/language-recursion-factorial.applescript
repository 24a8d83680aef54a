-- expect source: {3628800, 2.43290200817664E+18}
on factorial(x)
	if x > 0 then
		return x * (factorial(x - 1))
	else
		return 1
	end if
end factorial
{factorial(10), factorial(20)}
