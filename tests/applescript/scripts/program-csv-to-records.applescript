-- expect: Ann from Bern; Bob from Lyon
set source to "name,city
Ann,Bern
Bob,Lyon"
set rows to paragraphs of source
set {saved, AppleScript's text item delimiters} to {AppleScript's text item delimiters, {","}}
set people to {}
repeat with row in rest of rows
	set {n, c} to text items of row
	set end of people to {fullName:n, city:c}
end repeat
set AppleScript's text item delimiters to "; "
set lines_ to {}
repeat with p in people
	set end of lines_ to fullName of p & " from " & city of p
end repeat
set answer to lines_ as text
set AppleScript's text item delimiters to saved
return answer
