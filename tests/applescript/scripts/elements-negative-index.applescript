-- expect: y
return item -2 of {"x", "y", "z"}
