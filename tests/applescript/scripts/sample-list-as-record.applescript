-- expect error: -1700
{1, 2} as record
