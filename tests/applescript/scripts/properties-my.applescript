-- expect: 3
property level : 1
on raiseIt()
	set my level to 3
end raiseIt
raiseIt()
return level
