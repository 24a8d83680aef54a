-- expect source: {5, script, "A"}
script A
	return 5
end script
{run A, class of A, name of A}
