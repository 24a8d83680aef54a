-- expect source: {{1, 9, 2, 3}, {1, 3}, {1}}
on insertAt(l, x, n)
	if n = 1 then return {x} & l
	if n > (count l) then return l & {x}
	return (items 1 thru (n - 1) of l) & {x} & (items n thru -1 of l)
end insertAt
on removeAt(l, n)
	if n = 1 then return rest of l
	if n = (count l) then return items 1 thru -2 of l
	return items 1 thru (n - 1) of l & items (n + 1) thru -1 of l
end removeAt
{insertAt({1, 2, 3}, 9, 2), removeAt({1, 2, 3}, 2), insertAt({}, 1, 1)}
