-- expect source: 15
property base : 10
script inner
	on calc(x)
		return x + base
	end calc
end script
inner's calc(5)
