-- expect: 5 1
set d to date "January 1, 2021"
copy d to kept
set other to d
set day of other to 5
return (day of d as text) & " " & day of kept
