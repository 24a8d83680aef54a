-- expect: 65 2
return ((id of "A") as text) & " " & (count of id of "AB")
