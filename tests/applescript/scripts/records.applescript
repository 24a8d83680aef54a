-- expect: Ann 5 6
set r to {name:"Ann", age:5}
set s to r's name & " " & age of r
set age of r to 6
return s & " " & (age of r)
