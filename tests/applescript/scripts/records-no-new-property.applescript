-- expect error: -10006
set r to {a:1}
set b of r to 2
