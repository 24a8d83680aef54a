-- expect source: {"1,234,567", "12"}
on addCommas(n)
	set s to n as text
	set r to ""
	repeat while length of s > 3
		set r to "," & (text -3 thru -1 of s) & r
		set s to text 1 thru -4 of s
	end repeat
	s & r
end addCommas
{addCommas(1234567), addCommas(12)}
