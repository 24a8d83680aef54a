-- expect: 2 1
return "" & (count of every integer of {1, "a", 2}) & " " & (count of texts of {1, "a", 2})
