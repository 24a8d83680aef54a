-- expect: 3
set rec to {a:1}
set r to a ref to a of rec
set contents of r to 3
return a of rec
