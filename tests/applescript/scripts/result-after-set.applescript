-- expect: 5
set x to 5
result
