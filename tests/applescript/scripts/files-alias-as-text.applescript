-- expect: Macintosh HD:Users:me:Pictures:
return (POSIX file "/Users/me/Pictures" as alias) as text
