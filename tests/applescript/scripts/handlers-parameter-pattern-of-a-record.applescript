-- expect: Ann is 30
on describe({person:n, age:a})
	return n & " is " & a
end describe
return describe({age:30, person:"Ann"})
