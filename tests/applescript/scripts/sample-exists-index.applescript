-- expect source: {false, true, false}
set l to {1, 2}
{exists item 3 of l, exists item 1 of l, item 3 of l exists}
