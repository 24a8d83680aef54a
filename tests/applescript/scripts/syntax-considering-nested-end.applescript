-- expect source: false
considering case and white space
	set a to "A" is "a"
end considering
a
