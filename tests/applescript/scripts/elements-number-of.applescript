-- expect: 3 5
return ((number of items in {1, 2, 3}) as text) & " " & (number of characters in "abcde")
