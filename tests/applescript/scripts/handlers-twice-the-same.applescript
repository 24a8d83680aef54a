-- expect error: -2752
on f()
end f
on f()
end f
