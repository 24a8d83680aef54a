-- expect source: "nobody"
try
	set r to button returned of (display dialog "x")
on error number -1713
	set r to "nobody"
end try
r
