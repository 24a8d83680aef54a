-- expect error: -1728
-- expect message: Can’t get running of 5.
return 5 is running
