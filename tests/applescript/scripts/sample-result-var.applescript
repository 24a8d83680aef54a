-- expect source: 15
3 + 4
set x to result * 2
result + 1
