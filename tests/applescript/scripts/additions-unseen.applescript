-- expect none
beep 2
say "hi" using "Alex" speaking rate 200 without waiting until completion
set volume output volume 50
set volume 3
open location "http://example.com"
mount volume "smb://server"
display notification "x" with title "y" subtitle "z" sound name "Frog"
