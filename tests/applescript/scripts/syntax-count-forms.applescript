-- expect source: {2, 2, 3, 3, 1, 2, 2, 1, 2, 2, 3}
{count of {1, 2}, count {1, 2}, (count "abc"), number of items of {1, 2, 3}, count every item of {1}, count items in {1, 2}, count words of "a b", length of {1}, (count of characters of "ab"), count {1, "a", 2} each integer, number of characters in "xyz"}
