-- expect source: {"FF", "1000"}
on toHex(n)
	set digits to "0123456789ABCDEF"
	set h to ""
	repeat until n = 0
		set h to (character ((n mod 16) + 1) of digits) & h
		set n to n div 16
	end repeat
	h
end toHex
{toHex(255), toHex(4096)}
