-- expect source: {15, 11, script}
set lib to load script POSIX file "/Users/me/Library.applescript"
set total of lib to 10
tell lib to set x to add(5)
{x, lib's add(1), class of lib}
