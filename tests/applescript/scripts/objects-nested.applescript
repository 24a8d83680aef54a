-- expect: inner sees 1
script outer
	property x : 1
	script inner
		on look()
			return "inner sees " & x
		end look
	end script
end script
return outer's inner's look()
