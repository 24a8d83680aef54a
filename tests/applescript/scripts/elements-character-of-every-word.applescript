-- expect: tqb
return (character 1 of every word of "the quick brown") as text
