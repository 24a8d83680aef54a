-- expect: 1
return count of (5 as list)
