-- expect error: -2741
-- expect message: Expected “if” but found “tell”.
if true then
	set x to 1
end tell
