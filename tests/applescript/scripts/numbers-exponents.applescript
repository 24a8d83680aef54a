-- expect: 1.0E+3 is 1000
if 1.0E+3 = 1000 then return "1.0E+3 is 1000"
