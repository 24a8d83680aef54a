-- expect error: -1708
-- expect events: GardEndS
tell application "Garden"
	end long season
end tell
