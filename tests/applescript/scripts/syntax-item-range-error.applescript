-- expect source: {"Can’t get items 2 thru 5 of {1, 2, 3}.", -1728}
try
	items 2 thru 5 of {1, 2, 3}
on error m number n
	{m, n}
end try
