-- expect error: -1719
tell application "Garden"
	ignoring application responses
		considering application responses
			delete bed 99
		end considering
	end ignoring
end tell
