-- expect error: -2741
on f()
end f
on f()
end f
