-- expect: 120
on factorial(n)
	script go
		on step_(k)
			if k < 2 then return 1
			return k * (step_(k - 1))
		end step_
	end script
	return go's step_(n)
end factorial
return factorial(5)
