-- expect: Macintosh HD:Users:me:Pictures:|/Users/me/Pictures/
set a to POSIX file "/Users/me/Pictures" as alias
return (a as text) & "|" & POSIX path of a
