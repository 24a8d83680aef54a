-- expect: -128 User canceled.
try
	error number -128
on error m number n
	return (n as text) & " " & m
end try
