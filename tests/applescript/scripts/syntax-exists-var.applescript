-- expect source: "undefined"
try
	get someUndefined
	set r to "defined"
on error number -2753
	set r to "undefined"
end try
r
