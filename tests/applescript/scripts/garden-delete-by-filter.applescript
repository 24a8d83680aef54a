-- expect: 1
tell application "Garden"
	delete (every plant of bed 1 whose height ≥ 90)
	return count of plants of bed 1
end tell
