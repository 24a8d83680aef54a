-- expect: 6
script calculator
	on multiply:a with_:b
		return a * b
	end multiply:with_:
end script
return calculator's multiply:2 with_:3
