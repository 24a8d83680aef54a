-- expect: 0 5
script box
	property content : 0
end script
copy box to other
set other's content to 5
return (box's content as text) & " " & other's content
