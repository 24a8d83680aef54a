-- expect: true false true
on show given a:x, b:y, c:z
	return (x as text) & " " & y & " " & z
end show
return show with a and c without b
