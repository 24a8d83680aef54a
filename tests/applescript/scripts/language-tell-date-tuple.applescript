-- expect source: {2021, December, 25, 0}
set d to current date
tell d to set {its year, its month, its day, its time} to {2021, 12, 25, 0}
{year of d, d's month, day of d, time of d}
