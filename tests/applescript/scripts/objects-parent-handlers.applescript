-- expect: Rex says hello
script Animal
	property name : "none"
	on speak()
		return (my name) & " says " & my sound()
	end speak
	on sound()
		return "nothing"
	end sound
end script
script Dog
	property parent : Animal
	property name : "Rex"
	on sound()
		return "hello"
	end sound
end script
return Dog's speak()
