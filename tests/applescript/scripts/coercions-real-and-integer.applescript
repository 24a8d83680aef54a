-- expect: 4 3.0 7.5
return ((3.7 as integer) as text) & " " & (3 as real) & " " & ("7.5" as number)
