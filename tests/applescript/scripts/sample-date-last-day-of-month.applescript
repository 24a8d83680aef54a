-- expect source: {29, 28, 31}
on lastDay(y, m)
	set d to current date
	set day of d to 1
	set year of d to y
	set month of d to m
	set d to d + 32 * days
	set day of d to 1
	return day of (d - 1 * days)
end lastDay
{lastDay(2024, February), lastDay(2023, 2), lastDay(2023, 12)}
