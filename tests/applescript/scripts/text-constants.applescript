-- expect: true
return (tab & return & linefeed & space & quote) is (character id {9, 13, 10, 32, 34})
