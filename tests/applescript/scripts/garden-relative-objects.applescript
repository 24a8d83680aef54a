-- expect: Alba Damask
tell application "Garden"
	set a to name of plant after plant "Damask" of bed 1
	set b to name of plant before plant "Alba" of bed 1
	return a & " " & b
end tell
