-- expect source: {11, 3}
set lib to load script POSIX file "/Users/me/Library.applescript"
set total of lib to 10
{lib's add(1), add(1) of (load script POSIX file "/Users/me/Library.applescript")}
