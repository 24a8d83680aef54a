-- expect source: {"one", "onet", {"o", "e", "", "wo", "", "hree"}}
set notes to POSIX file "/Users/me/Notes.txt"
set a to read notes before linefeed
set b to read notes until "t" as text
set c to read notes as «class utf8» using delimiter {"n", "t", linefeed}
{a, words of b as text, c}
