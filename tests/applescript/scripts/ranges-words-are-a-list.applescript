-- expect: 2
return count of (words 2 thru 3 of "a b c")
