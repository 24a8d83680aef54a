-- expect: 2
-- expect events: coredelo coresetd corecnte
tell application "Garden"
	ignoring application responses
		delete bed 99
		set name of bed 99 to "x"
		set n to count of beds
	end ignoring
	n
end tell
