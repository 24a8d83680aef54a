-- expect error: -2741
on f given x:y
end f
