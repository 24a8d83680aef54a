-- expect: -3 3
return (-(1 + 2) as text) & " " & +3
