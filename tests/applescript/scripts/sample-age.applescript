-- expect source: 29
on ageOn(birth, when)
	set a to (year of when) - (year of birth)
	if (month of when as integer) < (month of birth as integer) or ((month of when as integer) = (month of birth as integer) and day of when < day of birth) then set a to a - 1
	a
end ageOn
ageOn(date "6/15/1990", date "6/14/2020")
