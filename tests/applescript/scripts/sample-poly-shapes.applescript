-- expect source: {"square with area 9", "shape with area 0"}
script Shape
	property kind : "shape"
	on area()
		return 0
	end area
	on describe()
		return kind of me & " with area " & (my area())
	end describe
end script
on makeSquare(s)
	script
		property parent : Shape
		property kind : "square"
		on area()
			return s * s
		end area
	end script
end makeSquare
set sq to makeSquare(3)
{sq's describe(), describe() of Shape}
