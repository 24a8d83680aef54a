-- expect source: -1728
set l to {1, 2, 3}
try
	every integer of l whose it > 1
on error m number n
	n
end try
