-- expect: 5
set |end of it| to 5
return |end of it|
