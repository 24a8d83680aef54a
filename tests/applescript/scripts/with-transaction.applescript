-- expect: 1
with transaction
	set x to 1
end transaction
return x
