-- expect: /Users/me/Notes.txt
POSIX path of (POSIX file "/Users/me/Notes.txt" as alias)
