-- expect: 7
set r to {inner:{deep:7}}
return deep of inner of r
