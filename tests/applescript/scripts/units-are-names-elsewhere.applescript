-- expect: 26400
set miles to 5
set feet to miles * 5280
feet
