-- expect: b
return item 2 of "abc"
