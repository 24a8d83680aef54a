-- expect: Box
return name of {name:"Box", length:3}
