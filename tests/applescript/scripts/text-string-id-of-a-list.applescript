-- expect: Hi
return string id {72, 105}
