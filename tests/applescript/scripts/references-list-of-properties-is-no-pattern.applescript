-- expect error: -2741
on f({name} of x)
end f
