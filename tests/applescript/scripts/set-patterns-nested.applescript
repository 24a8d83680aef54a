-- expect: 1 2 3
set {a, {b, c}} to {1, {2, 3}}
return (a as text) & " " & b & " " & c
