-- expect error: -2753
-- expect message: The variable x is not defined.
property x : 1
on f()
	local x
	return x
end f
f()
