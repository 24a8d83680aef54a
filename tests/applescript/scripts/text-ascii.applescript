-- expect: 65 B
return ((ASCII number "A") as text) & " " & (ASCII character 66)
