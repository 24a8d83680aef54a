-- expect source: "MCMXCIV"
on roman(n)
	set vals to {{1000, "M"}, {900, "CM"}, {500, "D"}, {400, "CD"}, {100, "C"}, {90, "XC"}, {50, "L"}, {40, "XL"}, {10, "X"}, {9, "IX"}, {5, "V"}, {4, "IV"}, {1, "I"}}
	set out to ""
	repeat with pair in vals
		set {v, s} to pair
		repeat while n ≥ v
			set out to out & s
			set n to n - v
		end repeat
	end repeat
	out
end roman
roman(1994)
