-- expect source: {{"Damask", "Alba", "Gallica"}, "Roses"}
tell application "Garden"
	set {allNames, bedName} to {name of every plant, name} of bed "Roses"
	return {allNames, bedName}
end tell
