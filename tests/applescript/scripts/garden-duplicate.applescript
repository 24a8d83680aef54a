-- expect: 4 Damask
tell application "Garden"
	set copy_ to duplicate plant 1 of bed 1
	return (count of plants of bed 1) & " " & (name of copy_) as text
end tell
