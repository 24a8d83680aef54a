-- expect source: {"Can’t get b of {a:1}.", -1728}
set r to {a:1}
try
	b of r
on error m number n
	{m, n}
end try
