-- expect: KHOOR, zruog! / HELLO, world!
on shifted(t, amount)
	set answer to ""
	repeat with c in characters of t
		set n to id of c
		if n ≥ 65 and n ≤ 90 then
			set n to 65 + (n - 65 + amount + 26) mod 26
		else if n ≥ 97 and n ≤ 122 then
			set n to 97 + (n - 97 + amount + 26) mod 26
		end if
		set answer to answer & character id n
	end repeat
	return answer
end shifted
set secret to shifted("HELLO, world!", 3)
return secret & " / " & shifted(secret, -3)
