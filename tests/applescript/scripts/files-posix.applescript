-- expect: Macintosh HD:Users:me:a/b
(POSIX file "/Users/me/a:b") as text
