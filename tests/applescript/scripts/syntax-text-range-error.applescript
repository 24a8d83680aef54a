-- expect source: {"Can’t get text 2 thru 9 of \"abc\".", -1728}
try
	text 2 thru 9 of "abc"
on error m number n
	{m, n}
end try
