-- expect: 86400 true
set d to date "January 1, 2020"
set e to d + 1 * days
return ((e - d) as text) & " " & (e > d)
