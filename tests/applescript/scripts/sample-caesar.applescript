-- expect source: "KHOOR, C"
on rot(t, n)
	set r to {}
	repeat with c in id of t
		set c to contents of c
		if c ≥ 65 and c ≤ 90 then
			set end of r to (c - 65 + n) mod 26 + 65
		else
			set end of r to c
		end if
	end repeat
	character id r
end rot
rot("HELLO, Z", 3)
