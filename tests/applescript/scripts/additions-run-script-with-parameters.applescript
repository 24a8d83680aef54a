-- expect: 5
return run script "on run {a, b}
return a + b
end run" with parameters {2, 3}
