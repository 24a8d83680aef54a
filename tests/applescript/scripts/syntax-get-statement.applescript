-- expect source: 1
get {1, 2}
get item 1 of result
