-- expect source: {"007", "00123", "09"}
on pad(n, width)
	return text (-width) thru -1 of ("0000000000" & n)
end pad
{pad(7, 3), pad(123, 5), text -2 thru -1 of ("0" & 9)}
