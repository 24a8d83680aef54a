-- expect: 2
return length of ("e" & (character id 769) & "x")
