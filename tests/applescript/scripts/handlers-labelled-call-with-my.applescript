-- expect: 7
on add of x onto y
	return x + y
end add
return my (add of 3 onto 4)
