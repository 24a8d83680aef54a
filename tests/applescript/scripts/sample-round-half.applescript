-- expect source: {2, 2, -2, 2, 4}
{1.5 as integer, 2.5 as integer, -1.5 as integer, 2.4 as integer, "3.7" as integer}
