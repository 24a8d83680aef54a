-- expect source: "The variable zzz is not defined."
on f()
	return zzz
end f
try
	f()
on error m
	m
end try
