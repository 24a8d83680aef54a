-- expect: true
return true or false and false
