-- expect source: 3
# hash
-- dash
(* block
(* nested *) *)
set x to 1 -- trailing
set y to 2 # trailing
x + y (* inline *)
