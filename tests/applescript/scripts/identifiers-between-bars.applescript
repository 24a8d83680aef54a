-- expect: 3
set |a b| to 1
set |été| to 2
return |a b| + |été|
