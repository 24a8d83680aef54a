-- expect source: {8, "aé🌱"}
set f to POSIX file "/Users/me/wide.txt"
write "aé🌱" to f as «class ut16»
{get eof f, read f as «class ut16»}
