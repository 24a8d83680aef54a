-- expect error: -1719
on remove()
	tell application "Garden" to delete bed 99
end remove
ignoring application responses
	my remove()
end ignoring
