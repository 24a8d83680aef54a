-- expect source: {12, {2, 3, 5, 7, 11, 13, 17, 19, 23, 29}}
on gcd(a, b)
	if b = 0 then return a
	return gcd(b, a mod b)
end gcd
on isPrime(n)
	if n < 2 then return false
	repeat with i from 2 to (n ^ 0.5) div 1
		if n mod i is 0 then return false
	end repeat
	true
end isPrime
set primes to {}
repeat with n from 1 to 30
	if isPrime(n) then copy n to end of primes
end repeat
{gcd(48, 36), primes}
