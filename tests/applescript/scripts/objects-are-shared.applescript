-- expect: 5
script box
	property content : 0
end script
set other to box
set other's content to 5
return box's content
