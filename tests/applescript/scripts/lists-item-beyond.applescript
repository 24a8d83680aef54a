-- expect error: -1728
-- expect message: Can’t get item 4 of {1, 2, 3}.
item 4 of {1, 2, 3}
