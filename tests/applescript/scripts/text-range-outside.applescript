-- expect error: -1728
-- expect message: Can’t get text 1 thru -2 of "/".
return text 1 thru -2 of "/"
