-- expect: Bob
set people to {{who:"Ann"}, {who:"Bob"}}
return who of item 2 of people
