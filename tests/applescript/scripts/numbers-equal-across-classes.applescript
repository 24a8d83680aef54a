-- expect: true
return 1 = 1.0
