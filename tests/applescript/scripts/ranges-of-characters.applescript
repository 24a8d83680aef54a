-- expect: bcd
return (characters 2 thru 4 of "abcde") as text
