-- expect error: -2741
on f(x)
	if x = 1 then return "one"
	if x = 2 then
		return "two"
	else if x = 3 then return "three"
	return "many"
end f
{f(1), f(2), f(3), f(4)}
