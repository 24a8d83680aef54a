-- expect: 2026 November 21 Saturday 23 17 52
set d to date "Saturday, November 21, 2026 at 11:17:52 PM"
return (year of d as text) & " " & (month of d) & " " & day of d & " " & weekday of d & " " & hours of d & " " & minutes of d & " " & seconds of d
