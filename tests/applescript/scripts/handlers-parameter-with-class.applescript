-- expect: 6
on double(n as integer)
	return n * 2
end double
return double("3")
