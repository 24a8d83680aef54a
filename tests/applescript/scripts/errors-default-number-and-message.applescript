-- expect: -2700 Unknown error.
try
	error
on error m number n
	return (n as text) & " " & m
end try
