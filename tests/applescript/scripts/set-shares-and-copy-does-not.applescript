-- expect: 2 1
set a to {1}
set b to a
copy a to c
set end of a to 2
return (count b as text) & " " & (count c)
