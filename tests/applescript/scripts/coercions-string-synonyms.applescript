-- expect: 1 2 3
return (1 as string) & " " & (2 as Unicode text) & " " & (3 as «class utf8»)
