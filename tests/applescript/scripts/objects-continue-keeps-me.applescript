-- expect: child
script Base
	property label : "base"
	on describe()
		return my label
	end describe
end script
script Child
	property parent : Base
	property label : "child"
	on describe()
		continue describe()
	end describe
end script
return Child's describe()
