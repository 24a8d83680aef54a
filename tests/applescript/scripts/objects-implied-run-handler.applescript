-- expect: 3
script s
	set a to 1
	a + 2
end script
tell s to run
