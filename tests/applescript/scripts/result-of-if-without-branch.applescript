-- expect none
set x to 1
if x is 2 then return "no"
