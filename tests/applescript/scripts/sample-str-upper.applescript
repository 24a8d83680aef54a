-- expect source: {"HELLO, WORLD", "hello, world"}
on changeCase(t, toUpper)
	set lower to "abcdefghijklmnopqrstuvwxyz"
	set upper to "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
	if toUpper then
		set {fromSet, toSet} to {lower, upper}
	else
		set {fromSet, toSet} to {upper, lower}
	end if
	set out to ""
	considering case
		repeat with c in characters of t
			set p to offset of c in fromSet
			if p > 0 then
				set out to out & character p of toSet
			else
				set out to out & c
			end if
		end repeat
	end considering
	return out
end changeCase
{changeCase("Hello, World", true), changeCase("Hello, World", false)}
