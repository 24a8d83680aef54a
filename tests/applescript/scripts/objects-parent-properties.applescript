-- expect: 4
script Base
	property legs : 4
end script
script Child
	property parent : Base
end script
return Child's legs
