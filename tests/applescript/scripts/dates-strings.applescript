-- expect: Friday, May 1, 2026|2:30:00 PM|5/1/26
set d to date "5/1/2026 14:30"
return date string of d & "|" & time string of d & "|" & short date string of d
