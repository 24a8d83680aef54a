-- expect: 2
copy {1, 2} to a
copy a to b
set end of b to 3
return count of a
