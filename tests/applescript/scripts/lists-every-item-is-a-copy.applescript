-- expect: 2
set a to {1, 2}
set b to items of a
set end of b to 3
return length of a
