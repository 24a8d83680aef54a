-- expect: 12
set x to 5
set r to a reference to x
return r + 7
