-- expect error: -1700
-- expect message: Can’t make {1, 2} into type real.
{1, 2} as real
