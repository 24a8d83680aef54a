-- expect source: {"Notes.txt", "txt", 14, false, 2020, true, false}
set facts to info for POSIX file "/Users/me/Notes.txt"
{name of facts, name extension of facts, size of facts as integer, folder of facts, year of modification date of facts, folder of (info for (path to home folder)), locked of facts}
