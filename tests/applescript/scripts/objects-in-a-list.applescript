-- expect: 6
on makeItem(n)
	script
		property value : n
	end script
end makeItem
set total to 0
repeat with each_ in {makeItem(1), makeItem(2), makeItem(3)}
	set total to total + (value of each_)
end repeat
return total
