-- expect: 320
on total(heights)
	set sum to 0
	repeat with h in heights
		set sum to sum + h
	end repeat
	return sum
end total
tell application "Garden"
	return my total(height of every plant of bed 1)
end tell
