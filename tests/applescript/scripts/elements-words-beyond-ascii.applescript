-- expect: voilà|it’s|fine|really|«|no
set found to words of "« voilà » it’s fine—really"
set end of found to "«"
if found contains "»" then
	set end of found to "yes"
else
	set end of found to "no"
end if
set AppleScript's text item delimiters to "|"
return found as text
