-- expect: 3 2 4 -3 3 -2
return ((round 2.6) as text) & " " & (round 2.5) & " " & (round 3.2 rounding up) & " " & (round -2.5 rounding down) & " " & (round 2.5 rounding as taught in school) & " " & (round -2.9 rounding toward zero)
