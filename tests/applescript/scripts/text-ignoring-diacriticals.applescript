-- expect: false true
set a to "café" is "cafe"
ignoring diacriticals
	set b to "café" is "cafe"
end ignoring
return (a as text) & " " & b
