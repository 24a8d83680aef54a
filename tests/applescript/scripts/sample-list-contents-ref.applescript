-- expect source: {{n:10}, {n:20}}
set l to {{n:1}, {n:2}}
repeat with r in l
	set n of r to (n of r) * 10
end repeat
l
