-- expect source: {1, 2, 3, 4}
set out to 1
set apart to 2
set instead to 3
set aside to 4
{out, apart, instead, aside}
