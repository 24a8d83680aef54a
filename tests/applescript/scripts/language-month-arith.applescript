-- expect source: {February, 2, 1, Tuesday, 2022, 86400, true, 24.0, "2/1/22", "Tuesday, February 1, 2022"}
set d to date "Monday, January 31, 2022 at 12:00:00 AM"
set d2 to d + 1 * days
{month of d2, month of d2 as integer, day of d2, weekday of d2, year of d2, d2 - d, d2 > d, (d2 - d) / hours, short date string of d2, date string of d2}
