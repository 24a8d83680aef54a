-- expect error: -2741
set 5 to 6
