-- expect source: "123.5"
{1, "2", 3.5} as text
