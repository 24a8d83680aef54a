-- expect error: -2741
else
