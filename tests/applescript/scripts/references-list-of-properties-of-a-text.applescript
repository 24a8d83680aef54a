-- expect source: {3, text, {"a", "b", "c"}}
{length, class, characters} of "abc"
