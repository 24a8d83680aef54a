-- expect: 3 4
on cut of thePie from a to b
	return (a as text) & " " & b
end cut
return cut of "apple" from 3 to 4
