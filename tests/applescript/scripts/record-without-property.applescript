-- expect error: -1728
return age of {name:"x"}
