-- expect: 9
on square(n)
	return n * n
end square
script holder
	property operation : missing value
end script
set holder's operation to square
return holder's operation(3)
