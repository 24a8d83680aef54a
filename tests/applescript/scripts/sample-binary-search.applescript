-- expect source: {4, 0}
on binarySearch(aList, target)
	set {lo, hi} to {1, length of aList}
	repeat while lo ≤ hi
		set mid to (lo + hi) div 2
		set v to item mid of aList
		if v = target then
			return mid
		else if v < target then
			set lo to mid + 1
		else
			set hi to mid - 1
		end if
	end repeat
	return 0
end binarySearch
{binarySearch({1, 3, 5, 7, 9}, 7), binarySearch({1, 3}, 2)}
