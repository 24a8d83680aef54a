-- expect: 3 tries, then ok
property tries : 0
on flaky()
	set tries to tries + 1
	if tries < 3 then error "not yet" number 1000 + tries
	return "ok"
end flaky
on attempt(limit)
	repeat with i from 1 to limit
		try
			return flaky()
		on error m number n
			if n < 1000 then error m number n
		end try
	end repeat
	error "gave up"
end attempt
set answer to attempt(5)
return (tries as text) & " tries, then " & answer
