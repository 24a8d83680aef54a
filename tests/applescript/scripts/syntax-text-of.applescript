-- expect error: -1728
set x to text of "abc"
set y to string of 5
x
