-- expect: 2set x to 1
set x to x + 1
return x