-- expect: 3
set x to 1
x + 2
