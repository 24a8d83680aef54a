-- expect error: -2741
return "\q"
