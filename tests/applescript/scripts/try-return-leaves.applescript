-- expect: 1
try
	return 1
on error
	return 2
end try
return 3
