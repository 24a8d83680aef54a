-- expect: false true
repeat with x in {"a"}
	set direct to x is "a"
	set inside to contents of x is "a"
end repeat
return (direct as text) & " " & inside
