-- expect: true false
on isEven(n)
	if n = 0 then return true
	return isOdd(n - 1)
end isEven
on isOdd(n)
	if n = 0 then return false
	return isEven(n - 1)
end isOdd
return (isEven(20) as text) & " " & isEven(7)
