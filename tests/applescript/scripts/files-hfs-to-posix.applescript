-- expect: /Users/me/a b.txt
return POSIX path of "Macintosh HD:Users:me:a b.txt"
