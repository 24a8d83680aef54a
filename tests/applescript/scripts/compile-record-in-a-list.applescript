-- expect error: -2741
return {1, a:2}
