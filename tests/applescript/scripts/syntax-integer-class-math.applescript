-- expect source: {real, integer, real, integer, integer, real, 2, 5.36870912E+8}
{class of (4 / 2), class of (2 * 3), class of (2 ^ 2), class of (7 div 2), class of (5 mod 2), class of (2 + 0.0), (4 / 2) as integer, 536870911 + 1}
