-- expect: 3 1 2021
set d to date "January 31, 2021"
set day of d to 1
set month of d to February
set day of d to 29
return (month of d as integer as text) & " " & day of d & " " & year of d
