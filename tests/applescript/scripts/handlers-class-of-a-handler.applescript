-- expect: handler
on f()
end f
return (class of f) as text
