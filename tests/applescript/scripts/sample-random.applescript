-- expect source: {true, integer, true, real, true}
set r to random number from 1 to 6
set s to random number 10
{r ≥ 1 and r ≤ 6, class of r, s ≤ 10, class of (random number), (random number from 1 to 3 with seed 5) is in {1, 2, 3}}
