-- expect error: -2763
on f()
end f
"a" & f()
