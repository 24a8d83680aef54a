-- expect source: {2, missing value}
on find_(l, x)
	repeat with i from 1 to count of l
		if item i of l = x then return i
	end repeat
	return missing value
end find_
{find_({1, 2}, 2), find_({1}, 9)}
