-- expect: 150
-- expect events: coregetd
tell application "Garden"
	return «property Phei» of «class plnt» 2 of «class gbed» 1
end tell
