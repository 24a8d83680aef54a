-- expect source: {2000, 2, 29, 23, 5, 9, "Tuesday", 3, "11:05:09 PM", 83109}
set d to date "Tuesday, February 29, 2000 at 11:05:09 PM"
{year of d, month of d as integer, day of d, hours of d, minutes of d, seconds of d, weekday of d as text, (weekday of d) as integer, time string of d, time of d}
