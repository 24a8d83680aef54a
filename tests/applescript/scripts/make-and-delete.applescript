-- expect: 4 Sage 3
-- expect events: corecrel corecnte coregetd coredelo corecnte
tell application "Garden"
	set s to make new plant at bed 1 with properties {name:"Sage", height:30}
	set n to count of plants of bed 1
	set t to name of s
	delete s
	return "" & n & " " & t & " " & (count of plants of bed 1)
end tell
