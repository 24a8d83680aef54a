-- expect: 12
return ({a:1, b:2} as list) as text
