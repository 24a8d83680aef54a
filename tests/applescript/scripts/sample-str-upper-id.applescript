-- expect source: "ABCXYZ1"
on uppercase(t)
	set ids to {}
	repeat with n in (id of t) as list
		set n to n as integer
		if n ≥ 97 and n ≤ 122 then set n to n - 32
		set end of ids to n
	end repeat
	return string id ids
end uppercase
uppercase("abcXYZ1")
