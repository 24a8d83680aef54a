-- expect: 1.0E+10
return 10000000000
