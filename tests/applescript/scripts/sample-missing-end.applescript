-- expect error: -2741
if true then
	1
