-- expect source: {3, 3, 0, 0}
{offset of "c" in "abcabc", offset of "C" in "abc", offset of "x" in "abc", offset of "" in "abc"}
