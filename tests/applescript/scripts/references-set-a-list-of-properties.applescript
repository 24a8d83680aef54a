-- expect source: {90, red and white}
tell application "Garden"
	set {height, main colour} of plant "Alba" of bed "Roses" to {90, red and white}
	return {height, main colour} of plant "Alba" of bed "Roses"
end tell
