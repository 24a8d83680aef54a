-- expect source: {8, 94, 1, 2, 3, "N", 10}
set {x, y} to {8, 94}
set {a, {b, c}} to {1, {2, 3}}
set {name:n, size:s} to {name:"N", size:10}
{x, y, a, b, c, n, s}
