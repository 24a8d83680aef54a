-- expect source: "2023-07-04"
on isoDate(d)
	set y to text -4 thru -1 of ("0000" & (year of d))
	set m to text -2 thru -1 of ("00" & ((month of d) as integer))
	set dd to text -2 thru -1 of ("00" & (day of d))
	return y & "-" & m & "-" & dd
end isoDate
set d to current date
set {year of d, month of d, day of d, time of d} to {2023, July, 4, 0}
isoDate(d)
