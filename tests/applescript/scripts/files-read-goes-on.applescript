-- expect source: {4, 4, "three", 14, -39}
set ref_ to open for access POSIX file "/Users/me/Notes.txt"
set a to read ref_ for 4
set b to read ref_ until linefeed
set c to read ref_ before linefeed
set d to get eof ref_
try
	read ref_
on error number n
	set e to n
end try
close access ref_
{a's length, b's length, c, d, e}
