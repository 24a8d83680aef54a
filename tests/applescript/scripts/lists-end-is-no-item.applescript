-- expect error: -1728
-- expect message: Can’t get end of {1, 2}.
get end of {1, 2}
