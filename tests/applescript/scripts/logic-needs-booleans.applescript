-- expect error: -1700
return "maybe" and true
