-- expect source: {"User canceled.", -128}
try
	error number -128
on error m number n
	{m, n}
end try
