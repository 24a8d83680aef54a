-- expect: 5
((5 as list) as integer) as text
