-- expect: false true
considering case but ignoring white space
	set a to "A b" is "ab"
	set b to "A b" is "Ab"
end considering
return (a as text) & " " & b
