-- expect: The variable nothing_ is not defined.
try
	get nothing_
on error m
	return m
end try
