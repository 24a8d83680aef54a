-- expect source: {"Alba", 150}
-- expect events: coregetd coregetd
tell application "Garden"
	return {name, height} of plant "Alba" of bed "Roses"
end tell
