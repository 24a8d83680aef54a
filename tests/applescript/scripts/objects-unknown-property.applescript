-- expect error: -1728
script box
	property content : 0
end script
get box's colour
