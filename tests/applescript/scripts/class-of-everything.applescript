-- expect: integer real text boolean list record class date script constant
script s
end script
set d to date "2020-01-01"
set all to {}
repeat with x in {1, 1.5, "a", true, {}, {a:1}, integer, d, s, January}
	set end of all to class of x
end repeat
set AppleScript's text item delimiters to " "
return all as text
