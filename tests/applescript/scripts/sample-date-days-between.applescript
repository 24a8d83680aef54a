-- expect source: {60, 1209600, true, true, Friday, 2023}
set a to date "1/1/2024"
set b to date "3/1/2024"
{(b - a) div days, (a + 2 * weeks) - a, a < b, b comes after a, weekday of (a + 4 * days), (a - 1 * days)'s year}
