-- expect: 3.5 3 1 -3 -1
return (7 / 2 as text) & " " & 7 div 2 & " " & 7 mod 2 & " " & -7 div 2 & " " & -7 mod 2
