-- expect source: {{1, 9}, 9, 9}
set l to {1, 2}
set r to a reference to item 2 of l
set contents of r to 9
{l, contents of r, r as integer}
