-- expect: 1 2 3 4
set {a, {b, c}} to {1, {2, 3}}
set {x:d} to {x:4}
return "" & a & space & b & space & c & space & d
