-- expect: 3.14159265359
return pi
