-- expect source: 2
global counter
set counter to 0
on bump()
	global counter
	set counter to counter + 1
end bump
bump()
bump()
counter
