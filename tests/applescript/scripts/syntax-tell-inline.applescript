-- expect source: 2
tell {1, 2, 3} to return item 2
