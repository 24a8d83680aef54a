-- expect source: {true, true, "abcdef", true, "x", false}
on writeText(theText, theFile, isAppending)
	try
		set openFile to open for access file theFile with write permission
		if isAppending is false then set eof of openFile to 0
		write theText to openFile starting at eof
		close access openFile
		return true
	on error
		try
			close access file theFile
		end try
		return false
	end try
end writeText
set p to "Macintosh HD:Users:me:log.txt"
set a to writeText("abc", p, false)
set b to writeText("def", p, true)
set c to read file p
set d to writeText("x", p, false)
{a, b, c, d, read file p, writeText("x", "Macintosh HD:no such folder:x", false)}
