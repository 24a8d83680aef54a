-- expect: 7
property p : 1
set r to a reference to p
set p to 7
return contents of r
