-- expect error: -1708
delete 5
