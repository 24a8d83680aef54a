-- expect source: {-1713, -1713, -1713, -1713, -1713}
set found to {}
repeat with i from 1 to 5
	try
		if i = 1 then choose file name with prompt "x" default name "y"
		if i = 2 then choose color default color {0, 0, 0}
		if i = 3 then choose URL
		if i = 4 then choose application with title "x"
		if i = 5 then set t to text returned of (display dialog "x" default answer "" with icon note)
	on error number n
		set end of found to n
	end try
end repeat
found
