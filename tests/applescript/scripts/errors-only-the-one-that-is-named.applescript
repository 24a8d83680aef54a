-- expect: outer
try
	try
		error "outer" number 7
	on error number 8
		set x to "wrong"
	end try
on error m number 7
	set x to m
end try
x
