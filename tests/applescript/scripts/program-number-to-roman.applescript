-- expect: MCMXCIV MMXXVI
on roman(n)
	set answer to ""
	repeat with pair in {{1000, "M"}, {900, "CM"}, {500, "D"}, {400, "CD"}, {100, "C"}, {90, "XC"}, {50, "L"}, {40, "XL"}, {10, "X"}, {9, "IX"}, {5, "V"}, {4, "IV"}, {1, "I"}}
		set {value, letters} to pair
		repeat while n ≥ value
			set answer to answer & letters
			set n to n - value
		end repeat
	end repeat
	return answer
end roman
return roman(1994) & " " & roman(2026)
