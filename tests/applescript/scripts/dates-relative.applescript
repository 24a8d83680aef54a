-- expect source: {date "Friday, February 25, 2005 at 10:30:00 AM", date "Monday, January 24, 2005 at 10:30:00 AM", "3:00:00 PM", true}
set day_ to date "2/25/2005"
set a to date "10:30" of day_
set b to date "1/24" of a
set c to date "Sept 27, 1993" relative to date "3PM"
{a, b, time string of c, date "8 am" in day_ = day_ + 8 * hours}
