-- expect: 2,3,5,7,11,13,17,19,23,29,31,37,41,43,47
on primesUpTo(limit)
	set isPrime to {}
	repeat limit times
		set end of isPrime to true
	end repeat
	set item 1 of isPrime to false
	set i to 2
	repeat while i * i ≤ limit
		if item i of isPrime then
			repeat with j from i * i to limit by i
				set item j of isPrime to false
			end repeat
		end if
		set i to i + 1
	end repeat
	set primes to {}
	repeat with i from 1 to limit
		if item i of isPrime then set end of primes to i
	end repeat
	return primes
end primesUpTo

set {saved, text item delimiters} to {text item delimiters, ","}
set answer to primesUpTo(50) as text
set text item delimiters to saved
return answer
