-- expect error: -1700
-- expect message: Can’t make "abc" into type number.
return 3 > "abc"
