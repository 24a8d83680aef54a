-- expect: 2
set l to {1, 2, 3}
return l's item 2
