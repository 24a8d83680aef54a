-- expect: /Users/me/Desktop/ Macintosh HD:Users:me:Pictures:
return POSIX path of (path to desktop) & " " & (path to pictures folder as text)
