-- expect source: 7
run script "on run {a, b}
return a + b
end run" with parameters {3, 4}
