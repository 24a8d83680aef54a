-- expect error: -2741
-- expect message: Expected “end” but found end of script.
if true then
	set x to 1
