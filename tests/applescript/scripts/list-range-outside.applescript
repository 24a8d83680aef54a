-- expect error: -1728
-- expect message: Can’t get items 2 thru -1 of {"x"}.
return items 2 thru -1 of {"x"} as text
