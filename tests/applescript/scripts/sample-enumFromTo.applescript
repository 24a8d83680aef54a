-- expect source: {3, 4, 5, 6}
on enumFromTo(m, n)
	if m ≤ n then
		set xs to {}
		repeat with i from m to n
			set end of xs to i
		end repeat
		xs
	else
		{}
	end if
end enumFromTo
enumFromTo(3, 6)
