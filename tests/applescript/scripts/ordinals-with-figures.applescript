-- expect: b d
set l to {"a", "b", "c", "d"}
return (2nd item of l) & " " & (4th item of l)
