-- expect: 2
tell application "Garden"
	tell bed "Herbs"
		make new plant with properties {name:"Sage"}
		count plants
	end tell
end tell
