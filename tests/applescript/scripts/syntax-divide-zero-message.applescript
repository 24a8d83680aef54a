-- expect source: {"Can’t divide 5 by zero.", -2701}
try
	5 / 0
on error m number n
	{m, n}
end try
