-- expect source: {"12/30/23", "12/31/23", "1/1/24"}
set d to date "12/30/2023"
set r to {}
repeat 3 times
	set end of r to short date string of d
	set d to d + days
end repeat
r
