-- expect: 8.0 9.0 512.0
return (2 ^ 3 as text) & " " & 3 ^ 2 & " " & 2 ^ 3 ^ 2
