-- expect: 5
global g
on setIt()
	global g
	set g to 5
end setIt
setIt()
return g
