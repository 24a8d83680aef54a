-- expect source: {"boom-2700", {""}}
on f()
	set od to AppleScript's text item delimiters
	try
		set AppleScript's text item delimiters to ","
		error "boom"
	on error e number n
		set AppleScript's text item delimiters to od
		return e & n
	end try
end f
{f(), AppleScript's text item delimiters}
