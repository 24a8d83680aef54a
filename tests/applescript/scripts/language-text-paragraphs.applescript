-- expect source: {"two", 3, {"one", "two", "three"}, "three", {"one", "two", "three"}}
set t to "one" & return & "two" & linefeed & "three"
{paragraph 2 of t, count paragraphs of t, words of t, last word of t, every paragraph of t}
