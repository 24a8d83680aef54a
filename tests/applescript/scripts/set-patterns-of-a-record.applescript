-- expect: Ann 30
set {who:n, age:a} to {age:30, who:"Ann"}
return n & " " & a
