-- expect source: handler
on a_()
	1
end a_
set h to a_
class of h
