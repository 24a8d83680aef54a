-- expect: true
return true or undefinedName
