-- expect source: {true, true, false, false, false, false, true, false, true, false}
set r to {}
set end of r to 3 isn't 4
set end of r to "abc" doesn't contain "d"
set end of r to 3 isn't equal to 3
set end of r to "abc" doesn't start with "a"
set end of r to 5 isn't greater than 4
set end of r to {1} isn't contained by {1, 2}
set end of r to "abc" doesn't equal "abd"
set end of r to "b" isn't in "abc"
set end of r to "b" does not come before "a"
set end of r to "b" doesn't come after "a"
r
