-- expect: -2700 An error of type -2700 has occurred.
try
	error
on error m number n
	return (n as text) & " " & m
end try
