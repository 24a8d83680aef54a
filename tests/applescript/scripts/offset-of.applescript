-- expect: 3
set t to "x"
return offset of t in "ABXC"
