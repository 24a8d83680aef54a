-- expect: ac
return (front item of {"a", "b", "c"}) & back item of {"a", "b", "c"}
