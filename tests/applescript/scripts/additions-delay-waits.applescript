-- expect: 1
delay 0.5
return 1
