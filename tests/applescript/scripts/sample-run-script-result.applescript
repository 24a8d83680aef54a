-- expect source: 8
set f to run script "script
on f(x)
x * 2
end f
end script"
f's f(4)
