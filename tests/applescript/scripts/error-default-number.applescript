-- expect error: -2700
-- expect message: bad
error "bad"
