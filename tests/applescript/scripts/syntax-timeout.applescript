-- expect source: 2
with timeout of 5 seconds
	set x to 1
end timeout
with timeout of 2 * minutes seconds
	set x to 2
end timeout
x
