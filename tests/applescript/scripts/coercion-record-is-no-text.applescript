-- expect error: -1700
{a:1} as text
