-- expect: bc|abc|é
return (text 2 thru 3 of "abcd") & "|" & (text 1 thru -2 of "abcd") & "|" & (text 2 thru 2 of "aéb")
