-- expect: true
return class of (current date) is date
