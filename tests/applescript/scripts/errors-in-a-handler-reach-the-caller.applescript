-- expect: caught 9
on f()
	error "x" number 9
end f
try
	f()
on error number n
	return "caught " & n
end try
