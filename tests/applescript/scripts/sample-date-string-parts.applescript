-- expect source: {2021, January, 2, 15, 4, 5, Saturday}
set d to date "Saturday, January 2, 2021 at 3:04:05 PM"
set {year:y, month:m, day:dd, hours:h, minutes:mi, seconds:s, weekday:w} to d
{y, m, dd, h, mi, s, w}
