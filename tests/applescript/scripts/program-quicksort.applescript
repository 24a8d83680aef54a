-- expect: 1 1 2 3 4 5 5 6 9
on quicksort(l)
	if length of l < 2 then return l
	set pivot to item 1 of l
	set {lower, equal_, upper} to {{}, {}, {}}
	repeat with x in l
		set x to contents of x
		if x < pivot then
			set end of lower to x
		else if x > pivot then
			set end of upper to x
		else
			set end of equal_ to x
		end if
	end repeat
	return quicksort(lower) & equal_ & quicksort(upper)
end quicksort
set AppleScript's text item delimiters to " "
return quicksort({3, 1, 4, 1, 5, 9, 2, 6, 5}) as text
