-- expect: 2
return count of {a:1, b:2}
