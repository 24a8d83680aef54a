-- expect source: {true, true, class, "missing value", {missing value}, false}
set x to missing value
{x is missing value, x = missing value, class of x, x as text, {x}, x is not missing value}
