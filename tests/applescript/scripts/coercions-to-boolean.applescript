-- expect: true false
return (1 as boolean as text) & " " & ("false" as boolean)
