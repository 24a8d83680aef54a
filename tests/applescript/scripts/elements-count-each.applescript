-- expect: 2
return count {1, "a", 2} each integer
