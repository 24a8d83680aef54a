-- expect source: {-1, 9, 2, 3, 4}
set l to {2}
set beginning of l to 1
set end of l to 3
copy 4 to end of l
copy 0 to beginning of l
set l's item 2 to 9
set the first item of l to -1
l
