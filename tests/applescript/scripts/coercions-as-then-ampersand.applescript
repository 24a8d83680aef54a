-- expect: 5 apples
return 5 as text & " apples"
