-- expect: 11
return November as integer
