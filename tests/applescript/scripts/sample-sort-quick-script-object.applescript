-- expect source: {1, 2, 3, 5, 8, 9}
on quickSort(theList, l, r)
	script o
		property cutoff : 2
		property p : theList
		on qsrt(l, r)
			set i to l
			set j to r
			set v to my p's item ((l + r) div 2)
			repeat while (j > i)
				repeat while (my p's item i < v)
					set i to i + 1
				end repeat
				repeat while (my p's item j > v)
					set j to j - 1
				end repeat
				if (i ≤ j) then
					tell my p's item i
						set my p's item i to my p's item j
						set my p's item j to it
					end tell
					set i to i + 1
					set j to j - 1
				end if
			end repeat
			if (l < j) then qsrt(l, j)
			if (i < r) then qsrt(i, r)
		end qsrt
	end script
	tell o to qsrt(l, r)
	return o's p
end quickSort
quickSort({5, 2, 8, 1, 9, 3}, 1, 6)
