-- expect error: -1701
on cut of thePie given slices:n
	return n
end cut
cut of "apple"
