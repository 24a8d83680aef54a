-- expect source: {4, 2, -2, 3, 3, 2, -2, 2}
{round 3.5, round 2.5, round -2.5, round 2.5 rounding as taught in school, round 2.1 rounding up, round 2.9 rounding down, round -2.9 rounding toward zero, round 1.5 rounding to nearest}
