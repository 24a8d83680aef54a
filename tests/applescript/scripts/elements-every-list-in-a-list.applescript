-- expect: 2
return count of (lists of {1, {2}, {3, 4}})
