-- expect: bad 7 x integer {1}
try
	error "bad" number 7 from "x" to integer partial result {1}
on error m number n from o to t partial result p
	return m & " " & n & " " & o & " " & (t as text) & " {" & p & "}"
end try
