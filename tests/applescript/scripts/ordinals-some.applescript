-- expect: true
set l to {1, 2, 3}
repeat 20 times
	if some item of l is not in l then return false
end repeat
return true
