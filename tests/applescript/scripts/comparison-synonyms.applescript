-- expect: 14
set n to 0
if 1 equals 1 then set n to n + 1
if 1 is equal to 1 then set n to n + 1
if 1 is not equal to 2 then set n to n + 1
if 1 isn't 2 then set n to n + 1
if 1 does not equal 2 then set n to n + 1
if 1 doesn't equal 2 then set n to n + 1
if 2 is greater than 1 then set n to n + 1
if 1 is less than 2 then set n to n + 1
if 2 is greater than or equal to 2 then set n to n + 1
if 1 is less than or equal 1 then set n to n + 1
if 1 is not greater than 1 then set n to n + 1
if "a" comes before "b" then set n to n + 1
if "b" isn't contained by "xyz" then set n to n + 1
if {1, 2} doesn't contain 3 then set n to n + 1
return n
