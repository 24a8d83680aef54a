-- expect: ab
return (every text of {1, "a", "b"}) as text
