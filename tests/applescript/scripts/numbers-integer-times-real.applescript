-- expect: 3.0
return 2 * 1.5
