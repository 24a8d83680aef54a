-- expect source: 0
considering case
	offset of "C" in "abc"
end considering
