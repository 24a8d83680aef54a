-- expect: 5
set r to {volume:3}
set volume of r to 5
volume of r
