-- expect error: -2763
-- expect message: No result was returned from some part of this expression.
on f()
end f
{1, f()}
