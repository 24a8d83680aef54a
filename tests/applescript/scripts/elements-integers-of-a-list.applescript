-- expect: 12
return (integers of {1, "a", 2, 3.5}) as text
