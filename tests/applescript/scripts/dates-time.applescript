-- expect: 3661
return time of date "2020-01-01 01:01:01"
