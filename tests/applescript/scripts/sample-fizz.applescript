-- expect source: {"13", "14", "FizzBuzz"}
set l to {}
repeat with i from 1 to 15
	if i mod 15 = 0 then
		set next to "FizzBuzz"
	else if i mod 3 = 0 then
		set next to "Fizz"
	else if i mod 5 = 0 then
		set next to "Buzz"
	else
		set next to i as text
	end if
	set l to l & next
end repeat
items 13 thru 15 of l
