-- expect: red|RdWh is red and white
-- expect events: coregetd coresetd coregetd
tell application "Garden"
	set p to a reference to plant 1 of bed 1
	set before1 to (main colour of p) as text
	set main colour of p to Red And White
	set c to main colour of p
	if c is red and white then return before1 & "|RdWh is " & c
end tell
