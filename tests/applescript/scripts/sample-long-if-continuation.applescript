-- expect source: "yes"
set a to 1
set b to 2
if a = 1 and ¬
	b = 2 then
	set r to "yes"
else
	set r to "no"
end if
r
