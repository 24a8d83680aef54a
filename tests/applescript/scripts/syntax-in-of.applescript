-- expect source: {5, "b", 7}
{item 1 in {5, 6}, word 2 in "a b", first item in {7}}
