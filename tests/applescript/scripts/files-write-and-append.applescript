-- expect source: {{"FIRst", "sec"}, 9}
set target to "Macintosh HD:Users:me:new file.txt"
set f to open for access file target with write permission
set eof of f to 0
write "first" & linefeed to f
write "second" & linefeed to f starting at eof
write "FIR" to f starting at 1
close access f
set f to open for access file target with write permission
set eof f to 9
close access f
{paragraphs of (read file target), get eof file target}
