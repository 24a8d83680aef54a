-- expect: true false
set a to "ABC" is "abc"
considering case
	set b to "ABC" is "abc"
end considering
return (a as text) & " " & b
