-- expect: 3
return (count every word of "one two three")
