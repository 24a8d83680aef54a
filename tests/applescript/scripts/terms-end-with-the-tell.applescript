-- expect error: -2741
tell application "Garden"
	set h to height of plant 1 of bed 1
end tell
set x to height per week of h
