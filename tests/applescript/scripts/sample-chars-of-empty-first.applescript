-- expect source: {"Can’t get character 1 of \"\".", -1728}
try
	character 1 of ""
on error m number n
	{m, n}
end try
