-- expect: r
return character 2 of word 1 of paragraph 2 of ("ab cd" & return & "from to" & return)
