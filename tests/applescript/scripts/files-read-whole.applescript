-- expect source: {"one", 14, true}
set t to read POSIX file "/Users/me/Notes.txt"
{paragraph 1 of t, length of t, t ends with linefeed}
