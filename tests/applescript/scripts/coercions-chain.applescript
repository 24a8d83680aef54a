-- expect: 6
return "5" as integer + 1
