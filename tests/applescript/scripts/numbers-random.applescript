-- expect: true
repeat 50 times
	set n to random number from 3 to 5
	if n < 3 or n > 5 or class of n is not integer then return false
	set x to random number
	if x < 0 or x > 1 then return false
end repeat
return true
