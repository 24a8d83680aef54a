-- expect: 1 3
set r to {a:1} & {a:2, b:3}
return ((a of r) as text) & " " & b of r
