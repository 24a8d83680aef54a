-- expect: integer
set x to 5
set r to a reference to x
return (class of r) as text
