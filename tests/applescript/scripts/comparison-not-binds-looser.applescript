-- expect: true
return not 1 is 2
