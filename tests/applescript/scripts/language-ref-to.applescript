-- expect source: {5, 6, 5}
set x to 1
set r to a reference to x
set x to 5
{contents of r, r + 1, r as integer}
