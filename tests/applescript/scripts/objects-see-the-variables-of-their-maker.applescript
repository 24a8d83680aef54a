-- expect: 7
on adder(n)
	script
		on add(x)
			return x + n
		end add
	end script
end adder
return add(3) of adder(4)
