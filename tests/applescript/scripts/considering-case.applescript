-- expect: true false true
set a to "A" is "a"
considering case
	set b to "A" is "a"
end considering
ignoring white space and diacriticals
	set c to "e f" is "éf"
end ignoring
return "" & a & " " & b & " " & c
