-- expect: 1 2 Fizz 4 Buzz Fizz 7 8 Fizz Buzz 11 Fizz 13 14 FizzBuzz
set lines_ to {}
repeat with i from 1 to 15
	if i mod 15 = 0 then
		set end of lines_ to "FizzBuzz"
	else if i mod 3 = 0 then
		set end of lines_ to "Fizz"
	else if i mod 5 is equal to 0 then
		set end of lines_ to "Buzz"
	else
		set end of lines_ to i
	end if
end repeat
set AppleScript's text item delimiters to space
return lines_ as text
