-- expect: 6
set x to 5
set r to a reference to x
set contents of r to 6
return x
