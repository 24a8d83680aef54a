-- expect: Damask
tell application "Garden"
	return name of first plant of bed 1 whose name begins with "Da" and name contains "mas"
end tell
