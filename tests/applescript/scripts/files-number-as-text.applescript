-- expect source: {"42", text}
set f to POSIX file "/Users/me/number.txt"
write 42 to f as text
{read f, class of (read f)}
