-- expect: true false
set a to "version 10" comes before "version 9"
considering numeric strings
	set b to "version 10" comes before "version 9"
end considering
return (a as text) & " " & b
