-- expect: the quick
return text 1 thru word 2 of "the quick brown"
