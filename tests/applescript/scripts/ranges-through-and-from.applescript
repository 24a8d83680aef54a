-- expect: 12 23
set l to {1, 2, 3}
set a to (items 1 through 2 of l) as text
set b to (items from 2 to 3 of l) as text
return a & " " & b
