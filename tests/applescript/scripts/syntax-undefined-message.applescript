-- expect source: {"The variable x is not defined.", -2753}
try
	set y to x + 1
on error m number n
	{m, n}
end try
