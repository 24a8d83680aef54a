-- expect source: {6, 7, 51}
on makeCounter(start)
	script
		property n : start
		on up()
			set n to n + 1
			return n
		end up
	end script
	return result
end makeCounter
set c1 to makeCounter(5)
set c2 to makeCounter(50)
{c1's up(), c1's up(), c2's up()}
