-- expect: true false a ab
-- expect events: 
repeat with x in {"a"}
	set isValue to x is "a"
	set isContents to contents of x is "a"
end repeat
return "" & isContents & " " & isValue & " " & (x as text) & " " & x & "b"
