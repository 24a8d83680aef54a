-- expect: 1 2
property x : 1
on f()
	local x
	set x to 2
	return x
end f
set y to f()
return (x as text) & " " & y
