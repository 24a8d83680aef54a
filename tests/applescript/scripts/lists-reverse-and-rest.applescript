-- expect: cba bc
return ((reverse of {"a", "b", "c"}) as text) & " " & (rest of {"a", "b", "c"})
