-- expect error: -1728
-- expect message: Can’t get item 5 of {1, "a"}.
return item 5 of {1, "a"}
