-- expect error: -1700
-- expect message: Can’t make "abc" into type integer.
"abc" as integer
