-- expect source: {{"is", "the", "time"}, "is the time", "is", {"N", "o", "w"}, "folk", "folk"}
set t to "Now is the time for all good folk"
{words 2 thru 4 of t, text from word 2 to word 4 of t, text 5 thru 6 of t, characters 1 through 3 of t, word -1 of t, text -4 thru -1 of t}
