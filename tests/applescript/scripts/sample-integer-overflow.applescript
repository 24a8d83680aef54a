-- expect error: -1700
{2 ^ 31 as integer}
