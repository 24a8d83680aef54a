-- expect source: {10, 10, 2, 10}
script A
	property x : 1
end script
script B
	property parent : A
	property y : 2
end script
set x of B to 10
{x of A, x of B, y of B, B's parent's x}
