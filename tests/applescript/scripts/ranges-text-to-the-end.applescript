-- expect: brown fox
return text from character 11 to end of "the quick brown fox"
