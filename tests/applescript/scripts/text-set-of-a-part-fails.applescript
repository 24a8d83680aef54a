-- expect error: -10006
set t to "abc"
set character 1 of t to "x"
