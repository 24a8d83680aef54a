-- expect source: "tick 12"
to rock around the clock
	return "tick " & clock
end rock
rock around the 12
