-- expect: ant, Bee, cat, dog, emu
on bubbleSort(theList)
	set n to count of theList
	repeat with i from 1 to n - 1
		set swapped to false
		repeat with j from 1 to n - i
			if item j of theList > item (j + 1) of theList then
				set {item j of theList, item (j + 1) of theList} to {item (j + 1) of theList, item j of theList}
				set swapped to true
			end if
		end repeat
		if not swapped then exit repeat
	end repeat
	return theList
end bubbleSort
set AppleScript's text item delimiters to ", "
return bubbleSort({"dog", "ant", "emu", "cat", "Bee"}) as text
