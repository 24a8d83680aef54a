-- expect source: {{9, 2}, {9, 2}, {1, 2}}
set a to {1, 2}
set b to a
copy a to c
set item 1 of a to 9
{a, b, c}
