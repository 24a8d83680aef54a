-- expect: done
beep 2
say "Hello"
display notification "text" with title "title" subtitle "sub" sound name "Frog"
return "done"
