-- expect error: -1700
return {1} < {2}
