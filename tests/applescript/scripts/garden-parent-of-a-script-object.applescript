-- expect: Herbs
script gardener
	property parent : application "Garden"
	on second_()
		tell application "Garden" to return name of bed 2
	end second_
end script
return gardener's second_()
