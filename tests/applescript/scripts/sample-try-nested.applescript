-- expect source: {"inner", "outer 2"}
set log_ to {}
try
	try
		error "inner" number 1
	on error m number n
		set end of log_ to m
		error "outer" number 2
	end try
on error m number n
	set end of log_ to m & " " & n
end try
log_
