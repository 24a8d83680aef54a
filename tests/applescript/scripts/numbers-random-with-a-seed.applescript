-- expect: true
set a to random number from 1 to 1000000 with seed 7
set b to random number from 1 to 1000000 with seed 7
return a = b
