-- expect error: -2741
-- expect message: Expected variable name, property, etc. but found number.
set 5 to 6
