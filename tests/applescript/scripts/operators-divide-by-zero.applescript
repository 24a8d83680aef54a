-- expect error: -2701
-- expect message: Can’t divide 1 by zero.
return 1 / 0
