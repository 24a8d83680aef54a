-- expect source: {"A", "B", "C"}
on grade(n)
	if n ≥ 90 then
		return "A"
	else if n ≥ 80 then
		return "B"
	else
		return "C"
	end if
end grade
{grade(95), grade(85), grade(10)}
