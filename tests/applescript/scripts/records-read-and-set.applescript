-- expect: Ann 31
set r to {person:"Ann", age:30}
set age of r to (age of r) + 1
return person of r & " " & r's age
