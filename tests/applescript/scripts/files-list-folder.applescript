-- expect source: {{".hidden", "Compiled.scpt", "Library.applescript", "Notes.txt"}, {"Compiled.scpt", "Library.applescript", "Notes.txt"}, {"Macintosh HD"}}
{list folder (path to home folder), (list folder POSIX file "/Users/me" without invisibles), list disks}
