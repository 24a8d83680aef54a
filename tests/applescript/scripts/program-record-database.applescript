-- expect: Ben (25), Ann (31) | total 56
property people : {}
on addPerson(n, a)
	set end of people to {personName:n, personAge:a}
end addPerson
on older(a, b)
	return personAge of a > personAge of b
end older
on summary()
	set parts_ to {}
	set total to 0
	repeat with p in people
		set end of parts_ to (personName of p) & " (" & personAge of p & ")"
		set total to total + (p's personAge)
	end repeat
	set {saved, text item delimiters} to {text item delimiters, ", "}
	set answer to (parts_ as text) & " | total " & total
	set text item delimiters to saved
	return answer
end summary
addPerson("Ann", 31)
addPerson("Ben", 25)
if older(item 1 of people, item 2 of people) then set people to reverse of people
return summary()
