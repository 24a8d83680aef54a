-- expect source: "big"
set x to 3
if x > 2 then set y to "big"
if x < 2 then return "no"
y
