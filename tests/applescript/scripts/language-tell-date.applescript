-- expect source: {"Sunday, March 15, 2020 at 3:30:00 AM", true}
set d to date "1/1/2020"
tell d
	set its day to 15
	set its month to March
	set its hours to 13
end tell
set time of d to 3 * hours + 30 * minutes
{d as text, month of d = March}
