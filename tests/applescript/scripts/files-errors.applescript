-- expect source: {-43, -38, -38, -43, -61, -49, -1700, -50}
set found to {}
repeat with i from 1 to 8
	try
		if i = 1 then read POSIX file "/Users/me/none.txt"
		if i = 2 then close access POSIX file "/Users/me/Notes.txt"
		if i = 3 then read 77
		if i = 4 then open for access POSIX file "/nowhere/x"
		if i = 5 then write "x" to (open for access POSIX file "/Users/me/Notes.txt")
		if i = 6 then
			open for access POSIX file "/Users/me/a.txt" with write permission
			open for access POSIX file "/Users/me/a.txt" with write permission
		end if
		if i = 7 then write {1, 2} to POSIX file "/Users/me/a.txt"
		if i = 8 then read POSIX file "/Users/me/Notes.txt" from -99
		set end of found to 0
	on error number n
		set end of found to n
	end try
end repeat
found
