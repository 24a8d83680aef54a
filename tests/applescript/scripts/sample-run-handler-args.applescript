-- expect source: "no args"
on run argv
	if (count argv) = 0 then
		return "no args"
	else
		return item 1 of argv
	end if
end run
