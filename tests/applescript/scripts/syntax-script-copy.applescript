-- expect source: {7, 5, 7}
script A
	property n : 1
end script
copy A to B
set n of B to 5
set C to A
set n of C to 7
{n of A, n of B, n of C}
