-- expect source: {"true", "true", true, false, true, true, true}
{true as text, (1 = 1) as text, "yes" is "YES", not true, not (1 > 2), true and not false, true or (1 / 0 = 1)}
