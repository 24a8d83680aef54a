-- expect source: {1, "x", 3}
set n to "x"
{1, n, length} of "abc"
