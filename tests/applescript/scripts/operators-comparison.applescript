-- expect: true
set ok to {}
set end of ok to "ABC" is "abc"
set end of ok to 1 = 1.0
set end of ok to 5 is not "5"
set end of ok to {"a"} is not ""
set end of ok to missing value is not ""
set end of ok to "abc" < "abd"
set end of ok to 3 > "2"
set end of ok to "hello" contains "ELL"
set end of ok to "hello" starts with "he"
set end of ok to "hello" ends with "lo"
set end of ok to "b" is in {"a", "b"}
set end of ok to "" is not in {"a"}
set end of ok to "" is in "abc"
set end of ok to {1, 2, 3} contains {2, 3}
set end of ok to {{2}} does not contain 2
set end of ok to 2 is less than or equal to 2
set end of ok to {a:1, b:2} = {b:2, a:1}
set end of ok to "é" is "É"
set end of ok to "é" is not "e"
return ok does not contain false
