-- expect source: {65535, 0, 0}
set c to {65535, 0, 0} as RGB color
c
