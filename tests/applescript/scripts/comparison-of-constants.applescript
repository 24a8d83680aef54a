-- expect: true
return missing value is missing value and class of 1 is integer
