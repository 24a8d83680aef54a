-- expect source: {"Oops", 750, {}}
on f()
	try
		error "Oops" number 750
	on error m number n from o to t partial result p
		return {m, n, p}
	end try
end f
f()
