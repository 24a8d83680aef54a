-- expect error: -2741
-- expect message: Expected expression but found unknown token.
set x to €
