-- expect error: -1728
-- expect message: Can’t get b of {a:1}.
b of {a:1}
