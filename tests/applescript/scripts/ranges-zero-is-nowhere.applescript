-- expect error: -1728
items 0 thru 1 of {1, 2}
