-- expect source: {a:1}
{a:1} as record
