-- expect: 12 1
on makeCounter(start)
	script
		property current : start
		on increment()
			set current to current + 1
			return current
		end increment
	end script
end makeCounter
set a to makeCounter(10)
set b to makeCounter(0)
a's increment()
return (a's increment() as text) & " " & b's increment()
