-- expect source: {true, true, 54030}
{date "January 5, 2020" = date "1/5/2020", date "1/5/2020 3:00 PM" = date "Sunday, January 5, 2020 at 3:00:00 PM", time of date "1/5/2020 15:00:30"}
