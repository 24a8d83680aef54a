-- expect: 3 2 2 x end
set t to "one two
x end"
return "" & (count of words of "one, two three") & " " & (count of paragraphs of t) & " " & (length of "aé") & " " & (paragraph 2 of t)
