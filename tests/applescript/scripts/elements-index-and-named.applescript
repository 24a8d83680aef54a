-- expect: 2
return item index 2 of {1, 2}
