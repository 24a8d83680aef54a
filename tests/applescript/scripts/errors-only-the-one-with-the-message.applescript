-- expect error: -2700
-- expect message: this
try
	error "this"
on error "that"
	1
end try
