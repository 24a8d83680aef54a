-- expect error: -1702
load script POSIX file "/Users/me/Compiled.scpt"
