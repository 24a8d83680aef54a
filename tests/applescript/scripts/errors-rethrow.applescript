-- expect error: 42
-- expect message: outer: inner
try
	try
		error "inner" number 42
	on error m number n
		error "outer: " & m number n
	end try
end try
error "outer: inner" number 42
