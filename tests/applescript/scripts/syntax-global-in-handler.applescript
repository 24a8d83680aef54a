-- expect source: 42
on setIt()
	global shared
	set shared to 42
end setIt
setIt()
global shared
shared
