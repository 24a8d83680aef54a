-- expect source: true
set x to 5
(x > 0) and (x < 10) or not (x = 5)
