-- expect: Alba
-- expect events: coregetd
tell application "Garden"
	tell current bed
		tell plant 2
			return name
		end tell
	end tell
end tell
