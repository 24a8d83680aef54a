-- expect source: "Hi, Cy!"
script Alex
	on greet(n)
		return "Hi, " & n
	end greet
end script
script Bert
	property parent : Alex
	on greet(n)
		return (continue greet(n)) & "!"
	end greet
end script
tell Bert to greet("Cy")
