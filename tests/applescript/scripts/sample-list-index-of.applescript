-- expect source: {3, 0}
on indexOf(x, l)
	repeat with i from 1 to count l
		if item i of l is x then return i
	end repeat
	return 0
end indexOf
{indexOf("c", {"a", "b", "c"}), indexOf(4, {1})}
