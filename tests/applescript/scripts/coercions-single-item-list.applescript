-- expect: 5
return {5} as integer
