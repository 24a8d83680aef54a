-- expect: -5 oops {1} 3 integer
-- expect log: {1}
try
	error "oops" number -5 from {1} to integer partial result {3}
on error m number n from f to t partial result p
	log f
	return "" & n & " " & m & " {" & f & "} " & p & " " & t
end try
