-- expect: done
repeat
	try
		exit repeat
	on error
		return "an error"
	end try
end repeat
return "done"
