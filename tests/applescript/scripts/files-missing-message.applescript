-- expect error: -43
-- expect message: File Macintosh HD:Users:me:none.txt wasn’t found.
read POSIX file "/Users/me/none.txt"
