-- expect: 1
ignoring application responses
	set x to 1
end ignoring
return x
