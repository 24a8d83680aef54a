-- expect source: {"'it'\\''s'", "/Users/me/a.txt", "Macintosh HD:Users:me:a"}
{quoted form of "it's", POSIX path of "Macintosh HD:Users:me:a.txt", (POSIX file "/Users/me/a") as text}
