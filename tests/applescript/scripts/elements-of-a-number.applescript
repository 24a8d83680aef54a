-- expect error: -1728
get item 1 of 5
