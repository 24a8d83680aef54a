-- expect: Roses
-- expect events: coregetd
tell application id "org.example.garden"
	return name of current bed
end tell
