-- expect: 5
set r to {|first name|:5}
return |first name| of r
