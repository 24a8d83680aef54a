-- expect: 3
copy {1, 2} to {a, b}
return a + b
