-- expect source: {true, false, true}
on leapYear(y)
	return (y mod 4 is 0) and ((y mod 100 is not 0) or (y mod 400 is 0))
end leapYear
{leapYear(2000), leapYear(1900), leapYear(2024)}
