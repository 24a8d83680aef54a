-- expect source: {{1, 2}, script, list, 2, 2}
tell {1, 2}
	set a to it
	set b to me
	set c to class of it
	set d to count
	set e to length
end tell
{a, class of b, c, d, e}
