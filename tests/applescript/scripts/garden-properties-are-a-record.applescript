-- expect: Alba
tell application "Garden"
	set all to properties of plant "Alba" of bed 1
	return name of all
end tell
