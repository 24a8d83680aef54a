-- expect: 7
return run script "return 3 + 4"
