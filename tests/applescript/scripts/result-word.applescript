-- expect: 8
5 + 1
return result + 2
