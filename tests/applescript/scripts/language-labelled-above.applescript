-- expect source: {{6, 20, 99}, {5.5, 19.75, 99}}
on bigOnes of numberList above minLimit given rounding:roundThem
	set found to {}
	repeat with aNumber in numberList
		if contents of aNumber > minLimit then
			if roundThem then
				set end of found to (round aNumber)
			else
				set end of found to contents of aNumber
			end if
		end if
	end repeat
	return found
end bigOnes
set values to {2, 5.5, 19.75, 99, 1}
set a to bigOnes of values above 5 given rounding:true
set b to bigOnes of values above 5 without rounding
{a, b}
