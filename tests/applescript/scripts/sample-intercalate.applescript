-- expect source: "1, 2, 3"
on intercalate(delim, xs)
	set {dlm, my text item delimiters} to {my text item delimiters, delim}
	set s to xs as text
	set my text item delimiters to dlm
	s
end intercalate
intercalate(", ", {1, 2, 3})
