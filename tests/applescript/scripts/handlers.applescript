-- expect: 120 7 hello
on factorial(n)
	if n ≤ 1 then return 1
	return n * (factorial(n - 1))
end factorial
on sum({a, b})
	return a + b
end sum
on greet()
	"hello"
end greet
return "" & factorial(5) & " " & sum({3, 4}) & " " & my greet()
