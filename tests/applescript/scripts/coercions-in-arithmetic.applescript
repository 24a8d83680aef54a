-- expect: 8
return "5" + "3"
