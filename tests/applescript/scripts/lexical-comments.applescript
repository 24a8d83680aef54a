-- expect: 3
# a comment, É
(* one (* inside *) -- still one
*)
set x to 1 -- behind a statement
set x to x + ¬
	2 # after a continued line
return x
