-- expect: square 9, circle 12.57, sum 21.57
script Shape
	property label : "shape"
	on area()
		return 0
	end area
	on describe()
		return (my label) & " " & my rounded(my area())
	end describe
	on rounded(x)
		set hundredths to (round (x * 100)) / 100
		if hundredths = hundredths div 1 then return hundredths div 1
		return hundredths
	end rounded
end script
on makeSquare(side)
	script
		property parent : Shape
		property label : "square"
		on area()
			return side * side
		end area
	end script
end makeSquare
on makeCircle(radius)
	script
		property parent : Shape
		property label : "circle"
		on area()
			return pi * radius ^ 2
		end area
	end script
end makeCircle
set shapes to {makeSquare(3), makeCircle(2)}
set total to 0
set parts_ to {}
repeat with s in shapes
	set total to total + (s's area())
	set end of parts_ to s's describe()
end repeat
set end of parts_ to "sum " & Shape's rounded(total)
set AppleScript's text item delimiters to ", "
return parts_ as text
