-- expect: true
return "a\"\\\n\r\t" is ("a" & quote & (character 2 of "x\\") & linefeed & return & tab)
