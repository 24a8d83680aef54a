-- expect: 3600
return time to GMT
