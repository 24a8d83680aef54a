-- expect source: {5, 2, 1}
{some item of {5}, middle item of {1, 2, 3}, middle item of {1, 2}}
