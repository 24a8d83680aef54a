-- expect: after
try
	set x to 1 / 0
	return "not reached"
end try
return "after"
