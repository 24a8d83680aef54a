-- expect: 3
# a line
-- another
(* a block (* in a block *) still *)
return 1 (* one *) + 2 -- three
