-- expect: 2.5
return 5 ÷ 2
