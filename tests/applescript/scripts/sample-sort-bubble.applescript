-- expect source: {{1, 3, 5, 9}, {"Apple", "fig", "pear"}}
on bubbleSort(theList)
	set n to count theList
	repeat with i from 1 to n - 1
		repeat with j from 1 to n - i
			if item j of theList > item (j + 1) of theList then
				tell theList to set {item j, item (j + 1)} to {item (j + 1), item j}
			end if
		end repeat
	end repeat
	return theList
end bubbleSort
{bubbleSort({5, 3, 9, 1}), bubbleSort({"pear", "Apple", "fig"})}
