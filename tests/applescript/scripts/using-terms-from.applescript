-- expect: 150
-- expect events: coregetd
using terms from application "Garden"
	tell application "Garden"
		return height of plant 2 of bed 1
	end tell
end using terms from
