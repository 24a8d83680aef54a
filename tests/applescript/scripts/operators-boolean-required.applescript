-- expect error: -1700
-- expect message: Can’t make "abc" into type boolean.
if "abc" then return 1
