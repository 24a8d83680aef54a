-- expect source: {6, {"the", "quick", "brown", "fox", "can't", "jump"}, 31}
set t to "the quick  brown-fox can't jump"
{count words of t, words of t, count of characters of t}
