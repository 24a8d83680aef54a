-- expect: 8
script box
	property content : 0
end script
set content of box to 3
set box's content to (box's content) + 5
return content of box
