-- expect error: -2741
-- expect message: Expected end of line, etc. but found identifier.
set x to foo bar
