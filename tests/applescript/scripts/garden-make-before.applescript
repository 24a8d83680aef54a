-- expect: New,Damask
tell application "Garden"
	make new plant at before plant 1 of bed 1 with properties {name:"New"}
	set all to name of plants 1 thru 2 of bed 1
end tell
set AppleScript's text item delimiters to ","
return all as text
