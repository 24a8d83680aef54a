-- expect source: {name:"Alba", height per week:2, main colour:red and white}
tell application "Garden"
	return {name:"Alba", height per week:2, main colour:red and white}
end tell
