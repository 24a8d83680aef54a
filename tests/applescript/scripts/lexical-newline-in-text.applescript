-- expect: true
return "a
b" is "a" & linefeed & "b"
