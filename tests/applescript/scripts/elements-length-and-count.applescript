-- expect: 3 3 3
return ((length of "abc") as text) & " " & (count "abc") & " " & ("abc"'s length)
