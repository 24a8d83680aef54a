-- expect source: "negative: -4 (901)"
on risky(x)
	if x < 0 then error "negative: " & x number 901
	return x ^ 0.5
end risky
try
	risky(-4)
on error errMsg number errNum
	errMsg & " (" & errNum & ")"
end try
