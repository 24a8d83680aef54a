-- expect: apple 8
on cut of thePie given slices:n : 8
	return thePie & " " & n
end cut
return cut of "apple"
