-- expect: 3 b
set t to "a" & return & "b" & linefeed & "c"
return ((count of paragraphs of t) as text) & " " & paragraph 2 of t
