-- expect source: {"Hello A;Hello B;", 7}
property greeting : "Hello"
property names : {"A", "B"}
property total : 2 * 3 + 1
on greetAll()
	set r to ""
	repeat with n in names
		set r to r & greeting & " " & n & ";"
	end repeat
end greetAll
{greetAll(), total}
