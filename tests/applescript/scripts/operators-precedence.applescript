-- expect: true
-- & binds looser than +, as looser than &, comparisons looser still, then not, and, or.
set a to ("x" & 1 + 2) is "x3"
set b to (1 & 2 as text) is "12"
set c to not 1 = 2 and 3 > 2
set d to false and true or true
return a and b and c and d
