-- expect: true
return {a:1, b:2} = {b:2, a:1}
