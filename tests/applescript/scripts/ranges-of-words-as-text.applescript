-- expect: quick brown fox
return text from word 2 to word 4 of "the quick brown fox jumps"
