-- expect error: -2741
run script "set x to y z"
